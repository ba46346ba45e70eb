#include "ctl/DoctorCommand.h"

#include "platform/linux/checkup/Checkup.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <string_view>

namespace veilkeep {
namespace {

using Status = CheckupFinding::Status;

constexpr std::size_t lineWidth = 78;
constexpr std::string_view indent = "    ";

const char* labelOf(Status status) {
    switch (status) {
    case Status::Works:
        return "works";
    case Status::Limited:
        return "limited";
    case Status::Fails:
        return "does not work";
    }
    return "";
}

const char* wordOf(Status status) {
    return status == Status::Fails ? "fails" : labelOf(status);
}

// In lines that fit a terminal; a word that does not has one of its own.
std::string paragraph(const QString& text) {
    std::string lines;
    std::size_t column = 0;
    for (const QString& word : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const auto size = static_cast<std::size_t>(word.size());
        if (column > 0 && column + 1 + size > lineWidth) {
            lines += '\n';
            column = 0;
        }
        lines += column == 0 ? indent : std::string_view(" ");
        column += (column == 0 ? indent.size() : 1) + size;
        lines += terminalText(word);
    }
    return lines + "\n";
}

std::string textOf(const CheckupFinding& finding) {
    std::string text = finding.title.toStdString() + ": " + labelOf(finding.status) + "\n";
    text += paragraph(finding.meaning);
    if (!finding.remedy.isEmpty())
        text += paragraph(QStringLiteral("What to do: %1").arg(finding.remedy));
    if (!finding.packages.isEmpty())
        text += paragraph(QStringLiteral("Packages: %1").arg(finding.packages.join(QLatin1Char(' '))));
    return text;
}

} // namespace

std::string findingsText(const std::vector<CheckupFinding>& findings) {
    std::string text;
    for (const CheckupFinding& finding : findings)
        text += textOf(finding);
    return text;
}

QByteArray findingsJson(const std::vector<CheckupFinding>& findings) {
    QJsonArray array;
    for (const CheckupFinding& finding : findings)
        array.append(QJsonObject{
            {QStringLiteral("check"), finding.check},
            {QStringLiteral("title"), finding.title},
            {QStringLiteral("status"), QLatin1String(wordOf(finding.status))},
            {QStringLiteral("meaning"), finding.meaning},
            {QStringLiteral("remedy"), finding.remedy.isEmpty() ? QJsonValue() : QJsonValue(finding.remedy)},
            {QStringLiteral("packages"), QJsonArray::fromStringList(finding.packages)},
        });
    return QJsonDocument(array).toJson();
}

RequestStatus statusOf(const std::vector<CheckupFinding>& findings) {
    const bool fails = std::ranges::any_of(
        findings, [](const CheckupFinding& finding) { return finding.status == Status::Fails; });
    return fails ? RequestStatus::SomeFailed : RequestStatus::AllWell;
}

RequestStatus DoctorCommand::run() {
    const std::vector<CheckupFinding> findings = findingsFrom(lookAtDesktop(VEILKEEP_VERSION));
    m_output.printText(m_json ? findingsJson(findings).toStdString() : findingsText(findings));
    return m_output.flush() ? statusOf(findings) : RequestStatus::SomeFailed;
}

} // namespace veilkeep
