#pragma once

#include "ctl/RowOutput.h"
#include "ctl/TerminalOutput.h"
#include "ctl/TerminalQuestions.h"
#include "platform/Request.h"

#include <string>
#include <unordered_map>

namespace veilkeep {

// The person or script that started veilkeepctl. Nothing of it is owned. Main thread.
class TerminalCaller : public RequestCaller {
public:
    TerminalCaller(TerminalOutput& output, TerminalQuestions& questions, RowOutput& rows)
        : m_output(output), m_questions(questions), m_rows(rows) {}

    // What went wrong with the path is told of it as the user wrote it.
    void setSpelling(const std::string& path, const std::string& argument);

    // The password that was just given answers the next question for it as well.
    void repeatPassword() { m_questions.repeatPassword(); }

    void itemDone(const std::string& path, const std::string& newPath) override;
    void itemFailed(const std::string& path, const QString& reason) override;
    void message(const QString& text) override { m_output.printMessage(text); }
    void listed(const std::vector<QVariantMap>& rows) override { m_rows.print(rows); }
    void progress(const QString& stage, const QString& subStage, std::size_t done,
                  std::size_t total) override;
    std::size_t ask(const Question& question) override { return m_questions.ask(question); }
    std::optional<QString> askPassword(const QString& line, int wrongEntries) override {
        return m_questions.askPassword(line, wrongEntries);
    }
    void cancelQuestion() override { m_questions.cancel(); }
    bool isCancelled() const override;

private:
    TerminalOutput& m_output;
    TerminalQuestions& m_questions;
    RowOutput& m_rows;
    std::unordered_map<std::string, std::string> m_spellings;
    QString m_subStage; // names the item that is worked on
};

} // namespace veilkeep
