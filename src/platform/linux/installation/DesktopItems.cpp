#include "platform/linux/installation/DesktopItems.h"

#include "core/base/PathText.h"
#include "core/base/TakeUntil.h"
#include "core/environment/Bundle.h"
#include "core/filesystem/ReadWholeFile.h"
#include "platform/linux/ExecLine.h"

namespace veilkeep {
namespace {

constexpr std::size_t largestTemplate = std::size_t{1} << 20;
constexpr std::string_view programMark = "@VEILKEEP_INSTALLED_PROGRAMS@/Veilkeep";

// A file of the bundle's "Resources/desktop", and where it belongs below the user's data.
constexpr struct {
    const char *source, *place;
    bool namesProgram; // in "Exec" and "TryExec" lines
} files[] = {
    {"com.ostrel.Veilkeep.desktop.in", "applications/com.ostrel.Veilkeep.desktop", true},
    {"com.ostrel.Veilkeep.service.in", "dbus-1/services/com.ostrel.Veilkeep.service", true},
    {"com.ostrel.Veilkeep.svg", "icons/hicolor/scalable/apps/com.ostrel.Veilkeep.svg", false},
    {"com.ostrel.Veilkeep-symbolic.svg", "icons/hicolor/symbolic/apps/com.ostrel.Veilkeep-symbolic.svg",
     false},
    {"veilkeepctl.1", "man/man1/veilkeepctl.1", false},
    {"veilkeepctl.bash", "bash-completion/completions/veilkeepctl", false},
    {"veilkeepctl.fish", "fish/vendor_completions.d/veilkeepctl.fish", false},
};

Result<std::string> withProgram(std::string_view text, const std::string& program, FieldCodes codes) {
    const auto exec = execWord(program, codes);
    const auto plain = entryText(program);
    if (!exec || !plain)
        return exec ? plain.error() : exec.error();
    std::string result;
    while (!text.empty()) {
        std::string line(takeUntil('\n', text));
        if (const std::size_t mark = line.find(programMark); mark != std::string::npos)
            line.replace(mark, programMark.size(), line.starts_with("Exec=") ? *exec : *plain);
        result += line + "\n";
    }
    return result;
}

} // namespace

Result<std::vector<DesktopItem>> desktopItems(const std::string& source, const InstallationPlaces& places) {
    const std::string program = bundledProgramPath(places.bundle, "Veilkeep");
    std::vector<DesktopItem> items;
    for (const auto& file : files) {
        auto content = readWholeFile(source + "/Contents/Resources/desktop/" + file.source, largestTemplate);
        const bool isService = std::string_view(file.source).ends_with(".service.in");
        if (content && file.namesProgram)
            content = withProgram(*content, program, isService ? FieldCodes::Unknown : FieldCodes::Known);
        if (!content)
            return content.error();
        items.push_back({joinPath(places.dataHome, file.place), std::move(*content), {}});
    }
    items.push_back({joinPath(places.commands, "veilkeep"), {}, program});
    items.push_back(
        {joinPath(places.commands, "veilkeepctl"), {}, bundledProgramPath(places.bundle, "veilkeepctl")});
    return items;
}

} // namespace veilkeep
