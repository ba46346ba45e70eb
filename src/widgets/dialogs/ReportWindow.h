#pragma once

#include <QPointer>
#include <QString>

#include <functional>
#include <string>

class QDialog;

namespace veilkeep {

// Tells that a problem report was written, and shows it. It waits for nobody; one at a time, a later report
// takes the place of the earlier one. Main thread.
class ReportWindow {
public:
    enum class Action { Open, Copy, Delete, Close };
    using WhenChosen = std::function<void(Action)>;

    ReportWindow() = default;
    ~ReportWindow();
    ReportWindow(const ReportWindow&) = delete;
    ReportWindow& operator=(const ReportWindow&) = delete;

    // The reason is why it was written, as a sentence. Open and Copy leave the window open and may come
    // again; Delete or Close comes last. Closing it otherwise is Close, close() and the next report tell
    // nothing.
    void show(const QString& reason, const QString& text, const std::string& path, WhenChosen whenChosen);
    void close();
    bool isOpen() const { return !m_window.isNull(); }

private:
    QPointer<QDialog> m_window;
};

} // namespace veilkeep
