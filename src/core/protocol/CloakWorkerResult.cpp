#include "core/protocol/CloakWorkerResult.h"

#include <utility>

namespace veilkeep {

CloakWorkerResult::CloakWorkerResult(std::int32_t errorCode, std::string newFileName)
    : m_errorCode(errorCode), m_newFileName(std::move(newFileName)) {}

CloakWorkerResult CloakWorkerResult::resultWithFileName(std::string fileName) {
    return {0, std::move(fileName)};
}

CloakWorkerResult CloakWorkerResult::resultWithErrorCode(std::int32_t errorCode) {
    return {errorCode, {}};
}

void CloakWorkerResult::setNewFileName(std::string fileName) {
    m_newFileName = std::move(fileName);
}

} // namespace veilkeep
