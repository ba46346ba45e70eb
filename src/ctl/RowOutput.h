#pragma once

#include "ctl/TerminalOutput.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QVariantMap>

#include <vector>

namespace veilkeep {

// Prints the rows that a request is answered with: as lines at once, or as one JSON document at the end. Main
// thread.
class RowOutput {
public:
    enum class Content { List, Status, Groups, GroupNames };

    RowOutput(Content content, bool json, TerminalOutput& output); // the output is not owned

    void print(const std::vector<QVariantMap>& rows);
    void finish();

    // Beside what the rows of "status" say.
    void setOwner(const QString& owner) { m_owner = owner; }

private:
    void keepForJson(const QVariantMap& row);
    void printLine(const QVariantMap& row);

    const Content m_content;
    const bool m_json;
    TerminalOutput& m_output;
    QString m_owner;
    QJsonArray m_items;
    QJsonObject m_status;
};

// A string where the bytes are well-formed UTF-8, else {"base64": "..."}.
QJsonValue jsonOfBytes(const QByteArray& bytes);

} // namespace veilkeep
