// Decoding the data file of a long list and encoding it again against writing and syncing the same bytes to a
// file in the working directory.
#include "benchmarks/support/SampleRecords.h"
#include "benchmarks/support/SideBySide.h"
#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/storage/RecordArchive.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <optional>

namespace {

using namespace veilkeep;

constexpr const char* scratchFile = "archive_codec.tmp";

void writeAndSync(std::string_view bytes) {
    const UniqueFd fd(::open(scratchFile, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    while (fd && !bytes.empty()) {
        const ssize_t written =
            retryOnInterrupt([&] { return ::write(fd.get(), bytes.data(), bytes.size()); });
        if (written <= 0)
            break;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    if (!bytes.empty() || ::fsync(fd.get()) != 0) {
        std::perror(scratchFile);
        std::exit(2);
    }
}

} // namespace

int main() {
    const auto records = benchmark::sampleRecords(100'000);
    const std::string archive = benchmark::sampleArchive(records);
    std::printf("%zu records, %zu bytes\n", records.size(), archive.size());

    std::string file, encoded;
    std::optional<Result<RecordArchive>> decoded;
    const benchmark::Side codec = {
        "decode and encode",
        [&] {
            decoded = decodeArchive(std::move(file), "files");
            encoded = benchmark::sampleArchive((*decoded)->records);
        },
        [&] {
            encoded = {};
            decoded.reset();
            file = archive;
        },
    };
    const benchmark::Side disk = {"write and fsync", [&] { writeAndSync(archive); },
                                  [] { ::unlink(scratchFile); }};
    benchmark::Report report;
    benchmark::sideBySide(report, codec, disk);
    ::unlink(scratchFile);
    if (encoded != archive || !decoded || !*decoded || (*decoded)->records != records) {
        std::fputs("what came back is not what went in\n", stderr);
        return 2;
    }
    return report.exitStatus();
}
