#pragma once

#include "core/base/Result.h"
#include "core/records/File.h"
#include "core/storage/SafeFile.h"
#include "filelist/FileList.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace veilkeep {

// "FilesInfo.Veilkeep": the list on the disk, as a dictionary of "files" and whatever a later version put
// beside it. Nothing that could not be read is ever written over: it is kept under a dated name first.
// Main thread.
class FilesInfoFile {
public:
    explicit FilesInfoFile(std::string path, SafeFileOptions options = {});

    const std::string& path() const { return m_file.path(); }

    struct Loaded {
        std::optional<std::vector<File>> files; // nothing where there is none, or none that can be read
        std::optional<Error> trouble;           // why the file itself could not be taken, or taken freely
        std::string earlierCopy;                // taken instead; empty where none was
    };
    // What the place holds, else the newest earlier copy that can be read; a file that is gone but has
    // earlier copies is a trouble as well. With the trouble NewerVersion and no earlier copy the files are
    // those of the file itself, which a later version wrote.
    Loaded load();

    // What the place holds; nothing else is taken in its place. Files of a later version that can be read are
    // answered too: isOfNewerVersion() tells.
    Result<std::vector<File>> read();

    // NewerVersion when a later version wrote what was loaded: that must stay as it is.
    Result<SafeFile::Saved> save(std::span<const ListedFile> files);

    bool isOfNewerVersion() const { return m_isOfNewerVersion; }

    // Whether the place holds, unchanged and durably, what was loaded or saved last.
    bool isAsLeft() const { return m_file.isAsLeft(); }

private:
    Result<std::vector<File>> take(std::string bytes, const std::string& path);

    SafeFile m_file;
    std::size_t m_maximumSize;
    std::vector<PropertyDictionary::Entry> m_unknown; // beside "files"
    bool m_isOfNewerVersion = false;
};

} // namespace veilkeep
