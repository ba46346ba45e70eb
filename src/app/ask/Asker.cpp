#include "app/ask/Asker.h"

#include "app/ask/ItemInTheWay.h"
#include "core/base/PathText.h"
#include "filelist/Texts.h"
#include "format/ErrorText.h"

#include <QCoreApplication>

#include <cerrno>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Asker)
};

QString shownName(const std::string& path) {
    return shownPath(lastPathComponent(path));
}

} // namespace

std::optional<QString> Asker::answerTo(const AskRequest& request) {
    switch (request.kind) {
    case AskRequest::Kind::Overwrite:
        return overwrite(request);
    case AskRequest::Kind::Recents:
        return decided(m_manager.showRecentsAlert());
    case AskRequest::Kind::RecentsApplications:
        return askAboutApplications(request);
    case AskRequest::Kind::GenericError:
        m_manager.showGenericError(shownPath(request.fields[0]), shownPath(request.fields[1]));
        return decided(QStringLiteral("OK"));
    }
    return std::nullopt;
}

std::optional<QString> Asker::overwrite(const AskRequest& request) {
    const auto inTheWay = ItemInTheWay::from(request.fields[0], request.fields[2], request.fields[3]);
    if (!inTheWay)
        return std::nullopt;
    const QString item = shownName(inTheWay->path);
    const auto answer =
        decided(m_manager.showOverwriteOriginalAlertForFile(item, shownPath(request.fields[1])));
    if (answer != QLatin1String("Replace"))
        return answer;
    if (const Result<void> moved = inTheWay->moveTo(m_trash); !moved) {
        tellWhyNotReplaced(item, moved.error());
        return std::nullopt;
    }
    return answer;
}

std::optional<QString> Asker::askAboutApplications(const AskRequest& request) {
    QStringList applications;
    for (auto application = request.fields.begin() + 1; application != request.fields.end(); ++application)
        applications << shownPath(*application);
    return decided(m_manager.showAppForRecentsAlertForFile(shownName(request.fields[0]), applications));
}

void Asker::tellWhyNotReplaced(const QString& item, const Error& error) {
    QString text;
    if (error.systemError == ENOTSUP)
        text = Texts::tr("The item “%1” was not replaced, since its disk has no trash.").arg(item);
    else if (error.systemError == ESTALE)
        text = Texts::tr("The item “%1” was not replaced, since another one took its place meanwhile.")
                   .arg(item);
    else
        text = Texts::tr("The item “%1” was not replaced, since it could not be moved to the trash. %2")
                   .arg(item, errorReason(error));
    m_manager.showGenericError(Texts::tr("Some items cannot be unhidden."), text);
}

std::optional<QString> Asker::decided(const QString& word) const {
    return word.isEmpty() || m_alerts.isNobodyThere() ? std::nullopt : std::optional(word);
}

} // namespace veilkeep
