#include "core/storage/FileDigest.h"

#include "core/base/Hexadecimal.h"
#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"

#include <fcntl.h>
#include <unistd.h>

#include <memory>
#include <vector>
#include <xxhash.h>

namespace veilkeep {
namespace {

struct StateFree {
    void operator()(XXH3_state_t* state) const { XXH3_freeState(state); }
};

std::string textOf(const XXH128_hash_t& hash) {
    return hexadecimal(hash.high64) + hexadecimal(hash.low64);
}

} // namespace

Result<std::string> fileDigest(const std::string& path) {
    const UniqueFd file(
        retryOnInterrupt([&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); }));
    const std::unique_ptr<XXH3_state_t, StateFree> state(XXH3_createState());
    if (!file || !state)
        return Error::system("open", path, errno);
    XXH3_128bits_reset(state.get());
    std::vector<char> buffer(std::size_t{1} << 18);
    for (;;) {
        const ssize_t count =
            retryOnInterrupt([&] { return ::read(file.get(), buffer.data(), buffer.size()); });
        if (count < 0)
            return Error::system("read", path, errno);
        if (count == 0)
            return textOf(XXH3_128bits_digest(state.get()));
        XXH3_128bits_update(state.get(), buffer.data(), static_cast<std::size_t>(count));
    }
}

std::string digestOf(std::string_view bytes) {
    return textOf(XXH3_128bits(bytes.data(), bytes.size()));
}

} // namespace veilkeep
