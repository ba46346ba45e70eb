#include "ctl/RowOutput.h"

#include "core/base/Utf8.h"

#include <QJsonDocument>

namespace veilkeep {
namespace {

QJsonValue jsonOf(const QVariant& value) {
    return value.userType() == QMetaType::QByteArray ? jsonOfBytes(value.toByteArray())
                                                     : QJsonValue::fromVariant(value);
}

// With null for what the row does not say.
QJsonObject jsonOf(const QVariantMap& row, std::initializer_list<const char*> keys) {
    QJsonObject object;
    for (const char* const key : keys)
        object.insert(QLatin1String(key), jsonOf(row.value(QLatin1String(key))));
    return object;
}

} // namespace

QJsonValue jsonOfBytes(const QByteArray& bytes) {
    // Qt leaves out a byte order mark at the beginning.
    if (const QString text = QString::fromUtf8(bytes);
        isWellFormedUtf8({bytes.data(), static_cast<std::size_t>(bytes.size())}) && text.toUtf8() == bytes)
        return text;
    return QJsonObject{{QStringLiteral("base64"), QString::fromLatin1(bytes.toBase64())}};
}

RowOutput::RowOutput(Content content, bool json, TerminalOutput& output)
    : m_content(content), m_json(json), m_output(output) {}

void RowOutput::print(const std::vector<QVariantMap>& rows) {
    for (const QVariantMap& row : rows)
        if (m_json)
            keepForJson(row);
        else
            printLine(row);
}

void RowOutput::keepForJson(const QVariantMap& row) {
    switch (m_content) {
    case Content::List:
        m_items.append(jsonOf(row, {"path", "originalPath", "name", "state", "group", "size", "kind"}));
        break;
    case Content::Groups:
    case Content::GroupNames:
        m_items.append(jsonOf(row, {"name", "id", "state", "autoHide", "items", "icon", "removable"}));
        break;
    case Content::Status:
        m_status = jsonOf(row, {"items", "hidden", "visible", "broken", "saveTrouble"});
        break;
    }
}

void RowOutput::printLine(const QVariantMap& row) {
    const auto text = [&](const char* key) { return row.value(QLatin1String(key)).toString().toStdString(); };
    const auto bytes = [&](const char* key) {
        return row.value(QLatin1String(key)).toByteArray().toStdString();
    };
    switch (m_content) {
    case Content::List:
        m_output.printPath(text("state"), bytes("originalPath"));
        break;
    case Content::Groups: {
        const char* const autoHide = row.value(QStringLiteral("autoHide")).toBool() ? "auto" : "-";
        m_output.printPath(text("state") + "\t" + autoHide + "\t" + text("items"), bytes("name"));
        break;
    }
    case Content::GroupNames:
        m_output.printPath(bytes("name"));
        break;
    case Content::Status:
        for (const char* const key : {"items", "hidden", "visible", "broken"})
            m_output.printText(std::string(key) + "\t" + text(key) + "\n");
        if (const QString trouble = row.value(QStringLiteral("saveTrouble")).toString(); !trouble.isEmpty())
            m_output.printText("save trouble\t" + terminalText(trouble) + "\n");
        break;
    }
}

void RowOutput::finish() {
    if (m_content == Content::Status)
        m_status.insert(QStringLiteral("owner"), m_owner.isNull() ? QJsonValue() : QJsonValue(m_owner));
    if (m_json) {
        const QJsonDocument document =
            m_content == Content::Status ? QJsonDocument(m_status) : QJsonDocument(m_items);
        m_output.printText(document.toJson().toStdString());
    } else if (m_content == Content::Status) {
        m_output.printText("owner\t" + (m_owner.isNull() ? "none" : m_owner.toStdString()) + "\n");
    }
}

} // namespace veilkeep
