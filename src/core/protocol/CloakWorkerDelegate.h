#pragma once

#include "core/records/PropertyDictionary.h"

#include <string>

namespace veilkeep {

// Whoever keeps the list of items and is told what workers left behind. Each call comes on the thread that
// called the CloakWorkerComunicator and is waited for; where the list belongs to another thread, the delegate
// hands the call over to it.
class CloakWorkerDelegate {
public:
    virtual ~CloakWorkerDelegate() = default;

    // A property list found in the in-progress folder; recordFromDictionary reads it.
    virtual void processTempFile(const PropertyDictionary&) {}
    // After all of them: whether what they said is kept durably now, so that they may be deleted.
    virtual bool keepWhatTempFilesSaid() { return true; }

    virtual void restoreStarted(const std::string& /*directory*/) {}
    virtual void restoreFinished() {}

protected:
    CloakWorkerDelegate() = default;
    CloakWorkerDelegate(const CloakWorkerDelegate&) = default;
    CloakWorkerDelegate& operator=(const CloakWorkerDelegate&) = default;
};

} // namespace veilkeep
