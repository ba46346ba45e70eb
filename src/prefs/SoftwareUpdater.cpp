#include "prefs/SoftwareUpdater.h"

#include "core/log/Log.h"
#include "core/storage/DefaultsKeys.h"
#include "filelist/Texts.h"

#include <QDateTime>

namespace veilkeep {
namespace {

using Kind = UpdateOutcome::Kind;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(SoftwareUpdater)
};

SoftwareUpdater::Answer failure(const QString& reason) {
    const QString unknown = Texts::tr("The package service gave no reason.");
    return {Texts::tr("Updates could not be looked for."), reason.isEmpty() ? unknown : reason};
}

SoftwareUpdater::Answer withoutPackage(const UpdateOutcome& outcome) {
    const QString offer =
        outcome.version.isEmpty()
            ? QString()
            : QLatin1Char('\n') + Texts::tr("It offers the package in version %1.").arg(outcome.version);
    return {Texts::tr("This copy of %1 was not installed as a package.").arg(applicationName()),
            Texts::tr("The system's package service cannot tell of newer versions of it.") + offer};
}

} // namespace

SoftwareUpdater::SoftwareUpdater(SoftwareUpdates& updates, UserDefaults& defaults)
    : m_updates(updates), m_defaults(defaults) {}

SoftwareUpdater::Answer SoftwareUpdater::answerFor(const UpdateOutcome& outcome) {
    switch (outcome.kind) {
    case Kind::UpToDate:
        return {Texts::tr("%1 is up to date.").arg(applicationName()),
                Texts::tr("Version %1 is the newest one that the package sources of this system offer.")
                    .arg(outcome.yourVersion)};
    case Kind::Newer:
        return {Texts::tr("There is a new version of %1.").arg(applicationName()),
                Texts::tr("Version %1 can be installed, you have version %2. It comes with the other updates "
                          "of your system.")
                    .arg(outcome.version, outcome.yourVersion)};
    case Kind::NotPackaged:
        return withoutPackage(outcome);
    case Kind::NoService:
        return {
            Texts::tr("There is no package service on this system."),
            Texts::tr("Without PackageKit %1 cannot look for updates. They come with the other updates of "
                      "your system.")
                .arg(applicationName())};
    case Kind::Failed:
        break;
    }
    return failure(outcome.reason);
}

void SoftwareUpdater::checkForUpdates() {
    if (m_isChecking)
        return;
    m_isChecking = true;
    m_updates.check([this](const UpdateOutcome& outcome) { end(outcome); });
}

void SoftwareUpdater::cancel() {
    m_isChecking = false;
    m_updates.cancel();
}

void SoftwareUpdater::end(const UpdateOutcome& outcome) {
    m_isChecking = false;
    if (outcome.kind != Kind::NoService && outcome.kind != Kind::Failed) {
        const QString now = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
        m_defaults.set(defaultsKey::lastUpdateCheck, now.toStdString());
        if (const auto stored = m_defaults.synchronize(); !stored)
            logError("When updates were looked for is not stored", stored.error());
    }
    emit ended(answerFor(outcome));
}

} // namespace veilkeep
