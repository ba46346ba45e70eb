// Items of alias records from nowhere, looked for: where the record says, and below a folder that has
// something to find.
#include "core/base/PathText.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/tracking/AliasResolver.h"
#include "core/tracking/FileAlias.h"
#include "tests/fuzz/Require.h"
#include "tests/fuzz/ScratchFolder.h"
#include "tests/fuzz/SealedAliasRecord.h"

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <fstream>

namespace {

using namespace veilkeep;

// A folder with an item of each form.
class Tree {
public:
    Tree() {
        for (const char* const directory : {"/a", "/a/.SYS_INDEX", "/.SYS_INDEX", "/.SYS_INDEX/b"})
            test::require(::mkdir((m_folder.path() + directory).c_str(), 0700) == 0, "there is a tree");
        for (const char* const file : {"/a/x.txt", "/a/.SYS_INDEX/zy.txt", "/.SYS_INDEX/b/c"})
            std::ofstream(m_folder.path() + file) << "content";
        auto root = describeItemAt(m_folder.path());
        test::require(root.has_value(), "the tree has a place");
        m_root = std::move(*root);
    }

    // What the record tells, but here.
    AliasRecord moved(AliasRecord record) const {
        record.lastPath = joinPath(m_root.lastPath, record.lastPath);
        record.volumePath = joinPath(m_root.volumePath, record.volumePath);
        record.volume = m_root.volume;
        return record;
    }

private:
    test::ScratchFolder m_folder;
    AliasRecord m_root;
};

void resolve(const std::string& bytes) {
    AliasResolver resolver(AliasResolver::Reach::Nearby);
    const AliasResolver::Answer answer = resolver.resolve(bytes, AliasResolver::Mounting::Never);
    using Outcome = AliasResolver::Answer::Outcome;
    test::require(answer.outcome != Outcome::Unusable, "each record has an answer");
    test::require(answer.outcome != Outcome::Found || itemExistsAt(answer.path), "what is found is there");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Tree tree;
    const std::string input(reinterpret_cast<const char*>(data), size);
    const auto record = decodeAliasRecord(test::sealedAliasRecord(input));
    if (!record)
        return 0;
    resolve(encodeAliasRecord(*record));
    resolve(encodeAliasRecord(tree.moved(*record)));
    return 0;
}
