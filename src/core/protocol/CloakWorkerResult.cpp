#include "core/protocol/CloakWorkerResult.h"

#include <utility>

namespace veilkeep {

CloakWorkerResult::CloakWorkerResult(std::int32_t errorCode, std::string newFileName)
    : m_errorCode(errorCode), m_newFileName(std::move(newFileName)) {}

CloakWorkerResult CloakWorkerResult::initWithFileName(std::string fileName) {
    return {0, std::move(fileName)};
}

CloakWorkerResult CloakWorkerResult::initWithErrorCode(std::int32_t errorCode) {
    return {errorCode, {}};
}

CloakWorkerResult CloakWorkerResult::resultWithFileName(std::string fileName) {
    return initWithFileName(std::move(fileName));
}

CloakWorkerResult CloakWorkerResult::resultWithErrorCode(std::int32_t errorCode) {
    return initWithErrorCode(errorCode);
}

void CloakWorkerResult::setNewFileName(std::string fileName) {
    m_newFileName = std::move(fileName);
}

} // namespace veilkeep
