#pragma once

#include <QPointer>
#include <QString>

#include <functional>

class QDialog;

namespace veilkeep {

// Says what the program is. Made when it is asked for, one at a time, gone when it closes. Main thread.
class AboutWindow {
public:
    AboutWindow(QString version, std::function<void()> openGuide);
    ~AboutWindow();
    AboutWindow(const AboutWindow&) = delete;
    AboutWindow& operator=(const AboutWindow&) = delete;

    void show(); // one that is open comes to the front
    void close();

private:
    QString m_version;
    std::function<void()> m_openGuide;
    QPointer<QDialog> m_window;
};

} // namespace veilkeep
