#include "platform/linux/installation/DesktopItems.h"

#include "core/base/PathText.h"
#include "core/base/TakeUntil.h"
#include "core/environment/Bundle.h"
#include "core/filesystem/ReadWholeFile.h"
#include "platform/linux/ExecLine.h"

#include <algorithm>

namespace veilkeep {
namespace {

constexpr std::size_t largestTemplate = std::size_t{1} << 20;
constexpr std::string_view placeMark = "@VEILKEEP_INSTALLED_PROGRAMS@/";

enum class Form { AsItIs, DesktopEntry, BusService, SystemdUnit };

// A file of the bundle's "Resources/desktop", and where it belongs below the user's data.
constexpr struct {
    const char *source, *place;
    Form form;
} files[] = {
    {"com.ostrel.Veilkeep.desktop.in", "applications/com.ostrel.Veilkeep.desktop", Form::DesktopEntry},
    {"com.ostrel.Veilkeep.service.in", "dbus-1/services/com.ostrel.Veilkeep.service", Form::BusService},
    {"veilkeep-watch.service.in", "systemd/user/veilkeep-watch.service", Form::SystemdUnit},
    {"com.ostrel.Veilkeep.svg", "icons/hicolor/scalable/apps/com.ostrel.Veilkeep.svg", Form::AsItIs},
    {"com.ostrel.Veilkeep-symbolic.svg", "icons/hicolor/symbolic/apps/com.ostrel.Veilkeep-symbolic.svg",
     Form::AsItIs},
    {"veilkeep.1", "man/man1/veilkeep.1", Form::AsItIs},
    {"veilkeepctl.1", "man/man1/veilkeepctl.1", Form::AsItIs},
    {"veilkeepctl.bash", "bash-completion/completions/veilkeepctl", Form::AsItIs},
    {"veilkeepctl.fish", "fish/vendor_completions.d/veilkeepctl.fish", Form::AsItIs},
    {"veilkeepctl.zsh", "zsh/site-functions/_veilkeepctl", Form::AsItIs},
};

Result<std::string> programIn(Form form, std::string_view line, const std::string& program) {
    if (form == Form::SystemdUnit)
        return unitWord(program);
    if (!line.starts_with("Exec="))
        return entryText(program);
    return execWord(program, form == Form::DesktopEntry ? FieldCodes::Known : FieldCodes::Unknown);
}

// A line names a program at most once.
Result<std::string> withPrograms(std::string_view text, const std::string& bundle, Form form) {
    std::string result;
    while (!text.empty()) {
        std::string line(takeUntil('\n', text));
        if (const std::size_t mark = line.find(placeMark); mark != std::string::npos) {
            const std::size_t begin = mark + placeMark.size();
            const std::size_t end = std::min(line.find(' ', begin), line.size());
            const auto program =
                programIn(form, line, bundledProgramPath(bundle, line.substr(begin, end - begin)));
            if (!program)
                return program.error();
            line.replace(mark, end - mark, *program);
        }
        result += line + "\n";
    }
    return result;
}

} // namespace

Result<std::vector<DesktopItem>> desktopItems(const std::string& source, const InstallationPlaces& places) {
    std::vector<DesktopItem> items;
    for (const auto& file : files) {
        auto content = readWholeFile(source + "/Contents/Resources/desktop/" + file.source, largestTemplate);
        if (content && file.form != Form::AsItIs)
            content = withPrograms(*content, places.bundle, file.form);
        if (!content)
            return content.error();
        items.push_back({joinPath(places.dataHome, file.place), std::move(*content), {}});
    }
    items.push_back(
        {joinPath(places.commands, "veilkeep"), {}, bundledProgramPath(places.bundle, "Veilkeep")});
    items.push_back(
        {joinPath(places.commands, "veilkeepctl"), {}, bundledProgramPath(places.bundle, "veilkeepctl")});
    return items;
}

} // namespace veilkeep
