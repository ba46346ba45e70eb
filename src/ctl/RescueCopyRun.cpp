#include "ctl/RescueCopyRun.h"

#include "core/base/PathText.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ItemAtPath.h"
#include "format/ErrorText.h"
#include "format/PrintableName.h"

#include <QCoreApplication>

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <utility>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(RescueCopyRun)
};

QString reasonOf(const Error& error) {
    if (error.code == ErrorCode::NotAFile)
        return Texts::tr("a device, which is not copied");
    if (error.systemError == ESTALE)
        return Texts::tr("something else was put there meanwhile");
    if (error.systemError == EXDEV)
        return Texts::tr("another file system, which is not copied");
    return errorReason(error);
}

} // namespace

RescueCopyRun::RescueCopyRun(const HiddenFolders& found, const std::vector<RescueRoot>& roots,
                             std::string target, bool staysOnVolume, TerminalOutput& output,
                             const TerminalCaller& caller)
    : m_found(found),
      m_roots(roots),
      m_target(std::move(target)),
      m_staysOnVolume(staysOnVolume),
      m_output(output),
      m_caller(caller) {
    forEachCopy(found, roots, [this](const auto&, const auto&) { return ++m_total, true; });
}

void RescueCopyRun::showPlan() const {
    forEachCopy(m_found, m_roots, [this](const std::string& hiddenPath, const std::string& place) {
        const std::string path = joinPath(m_target, place);
        if (itemExistsAt(path))
            m_output.printError(hiddenPath, "its place is taken, so the copy gets another name");
        m_output.printPair(hiddenPath, path);
        return !m_caller.isCancelled();
    });
    m_output.printMessage(
        Texts::tr("items that can be copied, folders with all that is in them: %1").arg(m_total));
    (void)m_output.flush(); // what could not be written is told, and known at the end as well
}

bool RescueCopyRun::copyAll() {
    constexpr mode_t forOwnerAlone = S_IRWXU;
    const auto made = makeDirectories(m_target, forOwnerAlone);
    UniqueFd target(made ? ::open(m_target.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC) : -1);
    if (!target) {
        tell(made ? Error::system("open", m_target, errno) : made.error());
        return false;
    }
    const auto boundaries =
        m_staysOnVolume ? WalkBoundaries::Kind::EveryMount : WalkBoundaries::Kind::PseudoFileSystems;
    RescueCopy copying(std::move(target), m_target, boundaries, report());
    forEachCopy(m_found, m_roots, [&](const std::string& hiddenPath, const std::string& place) {
        return copy(copying, hiddenPath, place);
    });
    const auto synced = copying.sync();
    if (!synced)
        tell(synced.error());
    if (copying.hasLostAttributes())
        m_output.printError(m_target,
                            Texts::tr("cannot keep all owners, rights, times or attributes of what was "
                                      "copied there")
                                .toStdString());
    if (const std::size_t left = m_total - m_copied - m_inPart - m_failed; left > 0)
        m_output.printMessage(Texts::tr("interrupted; items that were not copied: %1").arg(left));
    m_output.printMessage(Texts::tr("items that were copied: %1; in part: %2; not at all: %3")
                              .arg(m_copied)
                              .arg(m_inPart)
                              .arg(m_total - m_copied - m_inPart));
    return synced && m_copied == m_total;
}

bool RescueCopyRun::copy(RescueCopy& copying, const std::string& hiddenPath, const std::string& place) {
    if (m_caller.isCancelled())
        return false;
    const auto copied = copying.copy(hiddenPath, place);
    if (!copied && copied.error().systemError == ECANCELED)
        return false; // counted with those whose turn never came
    if (!copied) {
        ++m_failed;
        tell(copied.error(), hiddenPath);
        return true;
    }
    ++(copied->isWhole ? m_copied : m_inPart);
    if (!copied->isWhole)
        m_output.printError(copied->path, Texts::tr("only a part of it could be copied").toStdString());
    else if (lastPathComponent(copied->path) != lastPathComponent(place))
        m_output.printError(hiddenPath,
                            Texts::tr("its place is taken, so its copy is called %1")
                                .arg(QString::fromStdString(quotedName(lastPathComponent(copied->path))))
                                .toStdString());
    m_output.printPath(copied->path);
    (void)m_output.flush(); // its failure is told, and known at the end as well
    return true;
}

void RescueCopyRun::tell(const Error& error) const {
    m_output.printError(error.path, terminalText(reasonOf(error)));
}

// One trouble at the target may be that of many items.
void RescueCopyRun::tell(const Error& error, const std::string& hiddenPath) const {
    if (isSameOrBelow(error.path, hiddenPath))
        return tell(error);
    const QString place = QString::fromStdString(printableName(error.path));
    m_output.printError(hiddenPath, terminalText(place + ": " + reasonOf(error)));
}

RescueCopyReport RescueCopyRun::report() const {
    return {[this](const Error& error) { tell(error); },
            [this](const std::string& path) {
                m_output.showProgress(
                    QStringLiteral("%1/%2  ").arg(m_copied + m_inPart + m_failed).arg(m_total) +
                    QString::fromStdString(printableName(path)));
            },
            [this] { return m_caller.isCancelled(); }};
}

} // namespace veilkeep
