#include "tests/app/EveryWindow.h"

#include "alerts/ADAlertManager.h"
#include "app/ask/Asker.h"
#include "platform/linux/DesktopTrash.h"
#include "widgets/dialogs/AlertWindow.h"
#include "widgets/dialogs/ApplicationPanel.h"
#include "widgets/dialogs/ItemPanel.h"
#include "widgets/dialogs/PasswordPanel.h"
#include "widgets/dialogs/ProgressPanel.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPainterPath>
#include <QStackedWidget>

#include <cmath>
#include <filesystem>

namespace veilkeep::test {
namespace {

constexpr const char* group = "Travel & Papers";

// Takes an alert down instead of showing it; its last button is the answer.
class AlertNotes : public AlertPresenter {
public:
    AlertAnswer run(const Alert& alert) override {
        alerts.push_back(alert);
        return {.code = alert.codeWhenCancelled()};
    }
    void begin(const Alert& alert) override { alerts.push_back(alert); }
    void cancelOpen() override {}
    void serveOthers() override {}

    std::vector<Alert> alerts;
};

// Once nothing in it has moved for a moment: animations, previews and searches have come to their end.
bool isStill(QWidget& window) {
    constexpr qint64 moment = 150;
    QElapsedTimer unchanged;
    QImage before;
    return eventually([&] {
        const QImage now = window.grab().toImage();
        if (now != before || !unchanged.isValid())
            unchanged.start();
        before = now;
        return unchanged.hasExpired(moment);
    });
}

QString text(const char* context, const char* source) {
    return QCoreApplication::translate(context, source);
}

std::string textFile() {
    std::string content;
    for (int line = 1; line <= 30; ++line)
        content += "Day " + std::to_string(line) + ": a quiet walk along the coast, tea, a letter home.\n";
    return content;
}

} // namespace

std::string drawnPicture(int number) {
    QImage image(480, 360, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const int hue = number * 67 % 360;
    QLinearGradient sky(0, 0, 0, 360);
    sky.setColorAt(0, QColor::fromHsv(hue, 120, 235));
    sky.setColorAt(1, QColor::fromHsv((hue + 40) % 360, 50, 255));
    painter.fillRect(image.rect(), sky);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 244, 214));
    painter.drawEllipse(QPoint(110 + number * 53 % 280, 100), 42, 42);
    for (int hill = 0; hill < 3; ++hill) {
        QPainterPath ridge(QPointF(0, 360));
        for (int x = 0; x <= 480; x += 8)
            ridge.lineTo(x, 200 + hill * 50 + 28 * std::sin(x / (60.0 + 20 * hill) + number + hill * 2));
        ridge.lineTo(480, 360);
        painter.setBrush(QColor::fromHsv((hue + 150) % 360, 90 + hill * 40, 170 - hill * 35));
        painter.drawPath(ridge);
    }
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, "PNG"));
    return bytes.toStdString();
}

void EveryWindow::look(const std::string& name, QWidget& window) {
    EXPECT_TRUE(isStill(window)) << name;
    m_look(name, window);
}

void EveryWindow::show(const std::string& name, QWidget& window) {
    EXPECT_TRUE(showAndActivate(window)) << name;
    look(name, window);
    window.hide();
}

void EveryWindow::lookAtAll() {
    look("main-first-start", *m_world.window());
    fillList();
    lookAtMainWindow();
    lookAtQuickPreview();
    lookAtAlerts();
    lookAtPanels();
    lookAtPreferences();
    lookAtGroupSheet();
    lookAtMenus();
}

std::string EveryWindow::path(const std::string& name) const {
    return appScratch().path("home/Docs/" + name);
}

void EveryWindow::select(const std::vector<std::string>& files) {
    std::vector<ListedFile> chosen;
    for (const std::string& file : files)
        chosen.push_back(m_world.files().findFileWithOriginalPath(path(file)));
    m_world.files().filesController().setSelectedObjects(chosen);
    settle();
}

void EveryWindow::fillList() {
    int number = 0;
    for (const char* const name : {"Lighthouse.png", "Harbour at dusk.png", "Hills.png", "Meadow.png"})
        m_world.addFile(name, drawnPicture(++number));
    m_world.addFile("Travel diary.txt", textFile());
    m_world.addFile("Letter to Anna & Tom.odt", std::string(48213, 'x'));
    m_world.addFile("Insurance 2024.pdf", std::string(310554, 'x'));
    m_world.addFile("Budget.ods", std::string(91544, 'x'));
    m_world.addFile("Lost recording.ogg", std::string(5'400'000, 'x'));
    m_world.addFile("Birthday film.mkv", std::string(8'400'000, 'x'));
    appScratch().makeFile("home/Docs/Old projects/notes.txt");
    m_world.files().addFiles({path("Old projects")});
    m_world.files().waitForAdding();
    GroupViewController& groups = m_world.groups();
    const ListedGroup added = groups.addGroup();
    groups.setNewName(group, std::string(added->iconPath()), added);
    const auto moveTo = [&](const char* name, const std::vector<std::string>& files) {
        std::vector<std::string> paths;
        for (const std::string& file : files)
            paths.push_back(path(file));
        m_world.files().moveFiles(paths, groups.groupForName(name)->groupID().value_or(0));
    };
    moveTo(group, {"Travel diary.txt", "Insurance 2024.pdf"});
    moveTo("Secret Pictures", {"Lighthouse.png", "Harbour at dusk.png", "Hills.png"});
    std::vector<ListedFile> hidden;
    for (const char* const name : {"Harbour at dusk.png", "Insurance 2024.pdf", "Birthday film.mkv"})
        hidden.push_back(m_world.files().findFileWithOriginalPath(path(name)));
    EXPECT_TRUE(m_world.files().hideFiles(hidden, false));
    std::filesystem::remove(path("Lost recording.ogg"));
    m_world.parts().list.check();
    EXPECT_TRUE(eventually([&] {
        return m_world.files().findFileWithOriginalPath(path("Lost recording.ogg"))->state() == File::Broken;
    }));
    EXPECT_TRUE(eventually([&] { return !m_world.files().brokenFiles().isSearching(); }));
    m_world.waitForBatch();
}

void EveryWindow::lookAtMainWindow() {
    VeilkeepWindow& window = *m_world.window();
    EXPECT_TRUE(showAndActivate(window));
    window.focusFiles();
    select({"Lighthouse.png"});
    look("main-one-selected", window);
    select({"Lighthouse.png", "Harbour at dusk.png", "Budget.ods"});
    look("main-several-selected", window);
    select({"Lost recording.ogg"});
    look("main-broken-selected", window);
    for (ListedGroup shown : m_world.groups().groups())
        if (shown->name() == "Secret Pictures")
            m_world.groups().selectRow(static_cast<std::ptrdiff_t>(*m_world.groups().rowOf(shown)));
    look("main-group", window);
    m_world.groups().selectRow(0);
    auto& search = *window.findChild<QLineEdit*>();
    search.setText(QStringLiteral("ar"));
    look("main-search", window);
    search.setText(QStringLiteral("nowhere"));
    look("main-nothing-found", window);
    search.clear();
    m_world.files().filterController().setShowOnlyInconsistent(true);
    look("main-broken-only", window);
    m_world.files().filterController().setShowAll(true);
    window.toggleInfoView();
    look("main-info-toggled", window);
    window.toggleInfoView();
    emit m_world.files().restores().ended(appScratch().path("home/Docs"), {});
    look("main-message", window);
}

void EveryWindow::preview(const std::string& name, const std::vector<std::string>& files) {
    select(files);
    m_world.window()->toggleQuickLook();
    QWidget* const panel = m_world.dialog();
    ASSERT_TRUE(panel);
    const auto* const content = panel->findChild<QStackedWidget*>();
    const bool hasContent = name != "quick-broken"; // else its facts alone
    EXPECT_TRUE(eventually([&] { return !hasContent || content->currentIndex() > 0; })) << name;
    look(name, *panel);
    panel->close();
    settle();
}

void EveryWindow::lookAtQuickPreview() {
    preview("quick-image", {"Lighthouse.png"});
    preview("quick-text", {"Travel diary.txt"});
    preview("quick-several", {"Budget.ods", "Lighthouse.png", "Travel diary.txt"});
    preview("quick-broken", {"Lost recording.ogg"});
}

void EveryWindow::lookAtAlerts() {
    AlertNotes notes;
    UserDefaults defaults;
    Alerts alerts(notes, defaults);
    DesktopTrash trash;
    using Kind = AskRequest::Kind;
    Asker asker(alerts, trash);
    const std::string item = path("Meadow.png");
    (void)asker.answerTo({Kind::Overwrite, {item, "Meadow 2.png", "1", "2"}});
    (void)asker.answerTo({Kind::Recents, {}});
    (void)asker.answerTo({Kind::RecentsApplications, {item, "Image Viewer", "Text Editor"}});
    (void)asker.answerTo({Kind::GenericError, {"Meadow.png", "The disk is read-only."}});
    (void)alerts.ADRunWarningAlert(
        text("FilesViewController", "Are you sure you want to remove selected items from list?"),
        text("FilesViewController", "Items will be deleted only from list, not filesystem."),
        text("FilesViewController", "Remove"), text("FilesViewController", "Cancel"), {}, "key");
    Alert quit;
    quit.style = Alert::Style::Warning;
    quit.title = text("veilkeep::ADApp", "Some errors have been occured while hiding files");
    for (const char* const name : {"Lighthouse.png", "Insurance 2024.pdf", "Birthday film.mkv"})
        quit.errors.push_back({name, text("ErrorText", "Not enough rights to perform operation.")});
    (void)alerts.runAlert(
        quit, {text("veilkeep::ADApp", "Return to Veilkeep"), text("veilkeep::ADApp", "Force Quit")});
    int number = 0;
    for (const Alert& alert : notes.alerts) {
        AlertWindow window(alert, nullptr);
        show("alert-" + std::to_string(++number), window);
    }
    EXPECT_EQ(number, 6);
}

void EveryWindow::lookAtPanels() {
    QWidget* const main = m_world.window();
    {
        PasswordPanel panel("Veilkeep", text("PasswordManager", "Enter your %1 password:").arg("Veilkeep"));
        EXPECT_TRUE(showAndActivate(panel));
        look("password", panel);
        panel.showWrongEntries(2);
        look("password-wrong", panel);
    }
    {
        ProgressPanel panel(main);
        panel.begin(text("HideOperations", "Hiding of files started. Please wait..."), true);
        panel.setSubStage(text("HideOperations", "File: %1").arg("~/Docs/Harbour at dusk.png"));
        panel.setDone(31, 120);
        show("progress", panel);
    }
    for (const bool restores : {false, true}) {
        ItemPanel panel({.title = text("OpenPanels", restores ? "Restore Folders" : "Add Items"),
                         .button = text("OpenPanels", restores ? "Restore" : "Add"),
                         .foldersOnly = restores,
                         .several = true},
                        main);
        panel.startAt(appScratch().path("home/Docs"));
        show(restores ? "restore-panel" : "add-panel", panel);
    }
    {
        ApplicationPanel panel({{"a", "Image Viewer", "3.2", "image-viewer"},
                                {"b", "Text Editor", "43", "text-editor"},
                                {"c", "Paint & Draw", "1", ""}},
                               main);
        show("choose-application", panel);
    }
    const auto lookAtOpen = [this](const std::string& name, auto& window) {
        QWidget* const shown = m_world.dialog();
        ASSERT_TRUE(shown);
        look(name, *shown);
        window.close();
        settle();
    };
    m_world.parts().about.show();
    lookAtOpen("about", m_world.parts().about);
    m_world.parts().report.show("Something went wrong, and a problem report was written.",
                                "Veilkeep 0.1.0\nstd::runtime_error: no such row\n\nthread: main\n",
                                "/tmp/report.txt", [](ReportWindow::Action) {});
    lookAtOpen("report", m_world.parts().report);
    m_world.parts().update.show();
    m_look("update-looking", *m_world.dialog()); // its bar moves on
    const SoftwareUpdater::Answer answer =
        SoftwareUpdater::answerFor({UpdateOutcome::Kind::Newer, "2.0-1", "1.0-1", {}});
    m_world.parts().update.showAnswer(answer.title, answer.message);
    lookAtOpen("update-newer", m_world.parts().update);
}

void EveryWindow::lookAtPreferences() {
    PrefsController& prefs = m_world.parts().prefs;
    m_world.app().showPreferenceWindow();
    PrefsWindow& window = *m_world.parts().preferences;
    EXPECT_TRUE(showAndActivate(window));
    window.setHidden(PrefsText::WarningAboutRestartText, false);
    look("preferences-general", window);
    prefs.setSelectedTab("TOOLBAR_UPDATE");
    look("preferences-update", window);
    prefs.setSelectedTab("TOOLBAR_SECURITY");
    look("preferences-security", window);
    window.showTrouble(text("veilkeep::PrefsController", "The setting could not be stored.") + " ~/settings");
    look("preferences-trouble", window);
    prefs.changePasswordClick();
    prefs.setPasswordOkClick();
    look("preferences-set-password", window);
    prefs.setPasswordCancelClick();
    window.setOn(PrefsBox::RequirePasswordBox, true);
    prefs.changePasswordClick();
    window.setHidden(PrefsText::WrongOldPasswordText, false);
    look("preferences-change-password", window);
    prefs.passwordCancelClick();
    window.setOn(PrefsBox::RequirePasswordBox, false); // by the click
    prefs.requirePasswordClick();
    window.setStringValue(PrefsText::EnterTryNumberText, "2");
    for (const PrefsText line : {PrefsText::EnterWrongPasswordText, PrefsText::EnterTryNumberText,
                                 PrefsText::EnterTryNumberAppendixText})
        window.setHidden(line, false);
    look("preferences-ask-password", window);
    window.close();
    settle();
}

void EveryWindow::lookAtGroupSheet() {
    GroupEditController& controller = m_world.parts().groupEdit;
    m_world.when(
        "group-edit", [this] { return m_world.app().activeModalWidget() != nullptr; },
        [&] {
            QWidget& sheet = *m_world.app().activeModalWidget();
            look("group-edit", sheet);
            controller.takeImageFile(path("Travel diary.txt"));
            look("group-edit-no-image", sheet);
            sheet.findChild<QLineEdit*>()->setText(QStringLiteral("Custom Groups"));
            controller.apply();
            look("group-edit-taken", sheet);
            controller.cancel();
        });
    controller.editGroup(m_world.groups().groupForName(group));
    EXPECT_TRUE(m_world.areAllAnswered());
    m_world.groups().selectRow(3);
    m_world.groupList().setFocus();
    realInput::key("F2");
    look("group-name", *m_world.window());
    realInput::key("Escape");
}

void EveryWindow::lookAtMenus() {
    const auto popUp = [&](const std::string& name, QMenu& menu) {
        menu.popup(m_world.window()->mapToGlobal(QPoint(60, 60)));
        EXPECT_TRUE(eventually([&] { return menu.isVisible(); })) << name;
        look(name, menu);
        menu.close();
    };
    int number = 0;
    for (QAction* const action : m_world.window()->menuBar()->actions())
        popUp("menu-" + std::to_string(++number), *action->menu());
    StatusMenu status(m_world.groups(), m_world.app());
    popUp("status-menu", status.statusMenu());
}

} // namespace veilkeep::test
