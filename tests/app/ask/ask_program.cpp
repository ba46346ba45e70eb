// The asking part as a program, with a plain message box in the place of the application's windows. Where
// each button is on the screen goes to standard error, a line "X Y TITLE" each and "shown" at the end.

#include "app/ask/RunAsk.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTextStream>
#include <QTimer>
#include <QWindow>

namespace {

using namespace veilkeep;

class MessageBoxes : public AlertPresenter {
public:
    AlertAnswer run(const Alert& alert) override {
        if (!alert.beginShowing())
            return {alert.codeWhenCancelled(), false, true};
        QMessageBox box;
        box.setText(alert.title);
        box.setInformativeText(alert.message + alert.applications.join(' '));
        for (const Alert::Button& button : alert.buttons)
            box.addButton(button.title, QMessageBox::ActionRole);
        QTimer::singleShot(0, &box, [&] { tellPlaces(box); });
        m_open = &box;
        box.exec();
        m_open = nullptr;
        for (const Alert::Button& button : alert.buttons)
            if (box.clickedButton() && box.clickedButton()->text() == button.title)
                return {button.code, false, false};
        return {alert.codeWhenCancelled(), false, false};
    }
    void begin(const Alert& /*alert*/) override {}
    void cancelOpen() override {
        if (m_open)
            m_open->reject();
    }
    void serveOthers() override {}

private:
    static void tellPlaces(QMessageBox& box) {
        if (!box.windowHandle() || !box.windowHandle()->isExposed())
            return QTimer::singleShot(10, &box, [&] { tellPlaces(box); });
        QTextStream errors(stderr);
        for (const QAbstractButton* const button : box.buttons()) {
            const QPoint place = button->mapToGlobal(button->rect().center());
            errors << place.x() << ' ' << place.y() << ' ' << button->text() << '\n';
        }
        const bool isOnTop = (box.windowHandle()->flags() & Qt::WindowStaysOnTopHint) != 0;
        errors << (isOnTop ? "shown on top" : "shown") << '\n';
    }

    QMessageBox* m_open = nullptr;
};

} // namespace

int main(int argc, char** argv) {
    return runAsk(argc, argv, {[] { return std::make_unique<MessageBoxes>(); }});
}
