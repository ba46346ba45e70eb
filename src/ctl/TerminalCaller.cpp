#include "ctl/TerminalCaller.h"

#include "core/base/PathText.h"
#include "ctl/Interruption.h"

#include <utility>

namespace veilkeep {

void TerminalCaller::setSpelling(const std::string& path, const std::string& argument) {
    if (path != argument)
        m_spellings.try_emplace(std::string(withoutTrailingSlashes(path)), argument);
}

void TerminalCaller::itemDone(const std::string&, const std::string& newPath) {
    m_output.printPath(newPath);
}

void TerminalCaller::itemFailed(const std::string& path, const QString& reason) {
    const auto spelling = m_spellings.find(path);
    m_output.printError(spelling == m_spellings.end() ? path : spelling->second, terminalText(reason));
}

void TerminalCaller::progress(const QString& stage, const QString& subStage, std::size_t done,
                              std::size_t total) {
    if (std::exchange(m_subStage, subStage) != subStage)
        m_questions.goOn();
    QString text = subStage.isEmpty() ? stage : subStage;
    if (total > 0)
        text = QStringLiteral("%1/%2  ").arg(done).arg(total) + text;
    m_output.showProgress(text);
}

bool TerminalCaller::isCancelled() const {
    return Interruption::isAsked();
}

} // namespace veilkeep
