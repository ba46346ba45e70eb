#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

// What is to be asked, as cloakWorker's Question sends it: fields that each end with a NUL, then one NUL
// more.
struct AskRequest {
    enum class Kind {
        Overwrite,           // the item in the way, the proposed name, the device and inode of that item
        Recents,             // nothing
        RecentsApplications, // the item, then applications
        GenericError,        // title, text
    };

    static constexpr std::size_t maximumSize = std::size_t{64} << 10;

    Kind kind = Kind::GenericError;
    std::vector<std::string> fields;

    // Nothing where the word is no kind, or the fields are too many, too few, too long or late.
    static std::optional<AskRequest> read(std::string_view kind, int descriptor,
                                          std::chrono::milliseconds patience = std::chrono::seconds(10));
};

} // namespace veilkeep
