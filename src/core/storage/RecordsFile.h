#pragma once

#include "core/base/Result.h"
#include "core/records/PropertyDictionary.h"
#include "core/storage/SafeFile.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

// A list of records on the disk, as a dictionary of the records' key and whatever a later version put beside
// it. Nothing that could not be read is ever written over: it is kept under a dated name first. Owned by the
// file that says what the records are; one thread at a time.
class RecordsFile {
public:
    using Records = std::vector<PropertyDictionary>;

    RecordsFile(std::string path, std::string_view recordsKey, SafeFileOptions options);

    const std::string& path() const { return m_file.path(); }

    struct Loaded {
        std::optional<Records> records; // nothing where there is none, or none that can be read
        std::optional<Error> trouble;   // why the file itself could not be taken, or taken freely
        std::string earlierCopy;        // taken instead; empty where none was
    };
    // What the place holds, else the newest earlier copy that can be read; a file that is gone but has
    // earlier copies is a trouble as well. With the trouble NewerVersion and no earlier copy the records are
    // those of the file itself, which a later version wrote.
    Loaded load();

    // What the place holds; nothing else is taken in its place. Records of a later version that can be read
    // are answered too: isOfNewerVersion() tells.
    Result<Records> read();

    // NewerVersion when a later version wrote what was loaded: that must stay as it is.
    Result<SafeFile::Saved> save(std::span<const PropertyDictionary* const> records);

    bool isOfNewerVersion() const { return m_isOfNewerVersion; }

    // Whether the place holds, unchanged and durably, what was loaded or saved last.
    bool isAsLeft() { return m_file.isAsLeft(); }

private:
    Result<Records> take(std::string bytes, const std::string& path);

    SafeFile m_file;
    std::string m_recordsKey;
    std::size_t m_maximumSize;
    std::vector<PropertyDictionary::Entry> m_unknown; // beside the records
    bool m_isOfNewerVersion = false;
};

// Takes them as they are; each says by itself what it makes of its properties.
template <class Record>
std::vector<Record> recordsFrom(RecordsFile::Records properties) {
    std::vector<Record> records;
    records.reserve(properties.size());
    for (PropertyDictionary& each : properties)
        records.emplace_back(std::move(each));
    return records;
}

// They last as long as the records are not changed.
template <class Record>
std::vector<const PropertyDictionary*> propertiesOf(std::span<const std::shared_ptr<const Record>> records) {
    std::vector<const PropertyDictionary*> properties;
    properties.reserve(records.size());
    for (const std::shared_ptr<const Record>& record : records)
        properties.push_back(&record->properties());
    return properties;
}

} // namespace veilkeep
