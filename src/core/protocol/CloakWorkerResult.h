#pragma once

#include <cstdint>
#include <string>

namespace veilkeep {

// What became of one hide or unhide: code 0 and the item's new path, or the worker's error number and no
// path.
class CloakWorkerResult {
public:
    static CloakWorkerResult initWithFileName(std::string fileName);
    static CloakWorkerResult initWithErrorCode(std::int32_t errorCode);
    static CloakWorkerResult resultWithFileName(std::string fileName);
    static CloakWorkerResult resultWithErrorCode(std::int32_t errorCode);

    std::int32_t errorCode() const { return m_errorCode; }
    const std::string& newFileName() const { return m_newFileName; }
    void setNewFileName(std::string fileName);

    bool operator==(const CloakWorkerResult&) const = default;

private:
    CloakWorkerResult(std::int32_t errorCode, std::string newFileName);

    std::int32_t m_errorCode;
    std::string m_newFileName;
};

} // namespace veilkeep
