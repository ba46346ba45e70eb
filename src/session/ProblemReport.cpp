#include "session/ProblemReport.h"

#include "core/base/CHandles.h"
#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/environment/Bundle.h"
#include "core/environment/XdgDirectories.h"
#include "core/filesystem/Directories.h"
#include "core/log/Log.h"
#include "core/log/TimeText.h"
#include "session/ReportMask.h"

#include <QSysInfo>

#include <execinfo.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>

namespace veilkeep {
namespace {

constexpr off_t logTail = 32 << 10;
constexpr qsizetype longestReason = 4096;
const std::string namePrefix = "Problem Report ";
const std::string nameSuffix = ".txt";

std::string endOfLog(const std::string& path) {
    const UniqueFd file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    struct stat status = {};
    if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    const off_t begin = std::max<off_t>(0, status.st_size - logTail);
    std::string text(static_cast<std::size_t>(status.st_size - begin), '\0');
    const ssize_t count = ::pread(file.get(), text.data(), text.size(), begin);
    text.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    if (begin > 0) // what is left of a line could be of a name
        text.erase(0, std::min(text.find('\n'), text.size() - 1) + 1);
    return text;
}

std::string variable(const char* name) {
    return qEnvironmentVariable(name).left(100).toStdString();
}

// Of each module its name, without where it lies.
std::string stackText(const std::vector<void*>& stack) {
    const MallocedPointer<char*> symbols(::backtrace_symbols(stack.data(), static_cast<int>(stack.size())));
    std::string text;
    for (std::size_t frame = 0; symbols && frame < stack.size(); ++frame) {
        const std::string_view symbol(symbols.get()[frame]);
        const std::size_t module = symbol.substr(0, symbol.find_first_of("([")).rfind('/');
        text += "  ";
        text += symbol.substr(module == std::string_view::npos ? 0 : module + 1);
        text += '\n';
    }
    return text;
}

std::string linesOf(const std::vector<std::string>& texts) {
    std::string lines;
    for (const std::string& text : texts)
        lines += "  " + text + '\n';
    return lines;
}

Error writingError(const std::string& path) {
    return Error::system("write", path, errno);
}

Result<void> writeNew(const std::string& path, std::string_view text) {
    const UniqueFd file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (!file)
        return Error::system("open", path, errno);
    while (!text.empty()) {
        const ssize_t count = retryOnInterrupt([&] { return ::write(file.get(), text.data(), text.size()); });
        if (count < 0)
            return writingError(path);
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return {};
}

bool isReport(const std::string& name) {
    return name.starts_with(namePrefix) && name.ends_with(nameSuffix);
}

// Numbers those of one second on, so that names sort as their times do.
std::string nextName(const std::string& directory, const std::string& name) {
    int last = 0;
    for (const std::string& other : entryNamesIn(directory))
        if (other.starts_with(name) && isReport(other))
            last = std::max({last, 1, std::atoi(other.c_str() + std::min(name.size() + 1, other.size()))});
    if (last == 0)
        return name + nameSuffix;
    const std::string number = std::to_string(last + 1);
    return name + (number.size() < 2 ? "_0" : "_") + number + nameSuffix;
}

void removeOldest(const std::string& directory) {
    std::vector<std::string> reports = entryNamesIn(directory);
    std::erase_if(reports, [](const std::string& name) { return !isReport(name); });
    std::ranges::sort(reports, std::ranges::greater()); // the newest first
    for (std::size_t index = ProblemReport::mostKept; index < reports.size(); ++index)
        ::unlink(joinPath(directory, reports[index]).c_str());
}

} // namespace

std::string ProblemReport::text() const {
    const std::string bundle = applicationBundlePath();
    const auto masked = [&](const std::string& secret) { return maskedForReport(secret, itemNames, bundle); };
    std::string report = "Veilkeep " VEILKEEP_VERSION ", problem report\n\n";
    const auto line = [&](const char* title, const std::string& value) {
        report += std::string(title) + ": " + (value.empty() ? "unknown" : value) + "\n";
    };
    line("Time", timeText(std::chrono::system_clock::now()));
    line("Reason", masked(reason.left(longestReason).toStdString()));
    line("Qt", qVersion());
    line("System", (QSysInfo::prettyProductName() + ", " + QSysInfo::currentCpuArchitecture()).toStdString());
    line("Kernel", (QSysInfo::kernelType() + ' ' + QSysInfo::kernelVersion()).toStdString());
    line("Desktop", variable("XDG_CURRENT_DESKTOP"));
    line("Display", displayPlatform.toStdString());
    if (!stack.empty())
        report += "\nStack:\n" + stackText(stack);
    if (!stackOfFormerRun.empty())
        report += "\nStack:\n" + masked(linesOf(stackOfFormerRun));
    return report + "\nEnd of the log, without paths and names:\n" + masked(endOfLog(Log::shared().path()));
}

Result<std::string> ProblemReport::write(const std::string& text) {
    const std::string directory = OwnPlaces::current().stateDirectory;
    if (directory.empty())
        return Error::system("write", {}, ENOENT);
    if (const auto made = makeDirectories(directory, 0700); !made)
        return made.error();
    const std::string name = namePrefix + timeTextForName(std::chrono::system_clock::now());
    const std::string path = joinPath(directory, nextName(directory, name));
    if (const auto written = writeNew(path, text); !written)
        return written.error();
    removeOldest(directory);
    return path;
}

} // namespace veilkeep
