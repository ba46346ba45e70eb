#pragma once

#include "core/base/Result.h"
#include "core/records/File.h"
#include "core/storage/RecordsFile.h"
#include "filelist/FileList.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace veilkeep {

// "FilesInfo.Veilkeep": the list on the disk, with the care that RecordsFile takes. Main thread.
class FilesInfoFile {
public:
    explicit FilesInfoFile(std::string path, SafeFileOptions options = {});

    const std::string& path() const { return m_file.path(); }
    const RecordsFile& file() const { return m_file; }

    struct Loaded { // as RecordsFile::Loaded
        std::optional<std::vector<File>> files;
        std::optional<Error> trouble;
        std::string earlierCopy;
    };
    Loaded load();
    Result<std::vector<File>> read();
    Result<SafeFile::Saved> save(std::span<const ListedFile> files);

    bool isOfNewerVersion() const { return m_file.isOfNewerVersion(); }
    bool isAsLeft() { return m_file.isAsLeft(); }

private:
    RecordsFile m_file;
};

} // namespace veilkeep
