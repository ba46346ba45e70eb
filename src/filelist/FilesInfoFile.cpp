#include "filelist/FilesInfoFile.h"

#include <utility>

namespace veilkeep {

FilesInfoFile::FilesInfoFile(std::string path, SafeFileOptions options)
    : m_file(std::move(path), "files", std::move(options)) {}

FilesInfoFile::Loaded FilesInfoFile::load() {
    RecordsFile::Loaded loaded = m_file.load();
    std::optional<std::vector<File>> files;
    if (loaded.records)
        files = recordsFrom<File>(std::move(*loaded.records));
    return {std::move(files), std::move(loaded.trouble), std::move(loaded.earlierCopy)};
}

Result<std::vector<File>> FilesInfoFile::read() {
    Result<RecordsFile::Records> records = m_file.read();
    if (!records)
        return records.error();
    return recordsFrom<File>(std::move(*records));
}

Result<SafeFile::Saved> FilesInfoFile::save(std::span<const ListedFile> files) {
    return m_file.save(propertiesOf(files));
}

} // namespace veilkeep
