#include "core/protocol/InProgressRecord.h"

#include "core/storage/PropertyList.h"

#include <cstdint>

namespace veilkeep {

Result<PropertyDictionary> dictionaryFromRecord(const InProgressRecord& record) {
    const Result<std::string> error = writePropertyList({{"code", std::int64_t{record.errorCode}}});
    if (!error)
        return error.error();
    return PropertyDictionary{{"OriginalPath", record.originalPath},
                              {"CurrentPath", record.currentPath},
                              {"Error", Bytes{*error}},
                              {"Action", std::int64_t{record.action}}};
}

} // namespace veilkeep
