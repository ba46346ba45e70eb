#pragma once

#include "alerts/ProgressView.h"

#include <QStringList>

namespace veilkeep::test {

// Writes down what it is told: "begin Hiding…", "sub report.pdf", "done 1/3", "end".
class RecordingProgressView : public ProgressView {
public:
    const QStringList& log() const { return m_log; }
    void clearLog() { m_log.clear(); }

    void cancelAt(const QString& entry) { m_cancelAt = entry; } // the user cancels once this is written down

    void begin(const QString& stage, bool canBeCancelled) override {
        m_isCancelled = false;
        m_canBeCancelled = canBeCancelled;
        write("begin " + stage);
    }
    void setSubStage(const QString& subStage) override { write("sub " + subStage); }
    void setDone(std::size_t done, std::size_t total) override {
        write(QString("done %1/%2").arg(done).arg(total));
    }
    void end() override { write("end"); }
    bool isCancelled() const override { return m_isCancelled; }

private:
    void write(const QString& entry) {
        m_log.push_back(entry);
        m_isCancelled |= m_canBeCancelled && entry == m_cancelAt;
    }

    QStringList m_log;
    QString m_cancelAt;
    bool m_canBeCancelled = false;
    bool m_isCancelled = false;
};

} // namespace veilkeep::test
