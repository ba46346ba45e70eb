// Saves each text in turn to one file and tells how it went, a line each; for runs in which system calls are
// made to fail: save_file [--unread] PATH TEXT…

#include "core/storage/SafeFile.h"

#include <cstdio>
#include <string_view>

using namespace veilkeep;

namespace {

void tell(const Result<SafeFile::Saved>& saved) {
    if (saved)
        std::puts(*saved == SafeFile::Saved::Written ? "written" : "unchanged");
    else
        std::printf("%s %s %d\n", saved.error().code == ErrorCode::NotDurable ? "not durable" : "failed",
                    saved.error().operation.c_str(), saved.error().systemError);
}

} // namespace

int main(int argc, char** argv) {
    int next = 1;
    const bool isUnread = argc > next && std::string_view(argv[next]) == "--unread";
    next += isUnread ? 1 : 0;
    if (argc <= next)
        return 2;
    SafeFile file(argv[next++]);
    if (!isUnread && !file.read())
        return 1;
    for (; next < argc; ++next)
        tell(file.save(argv[next]));
    return 0;
}
