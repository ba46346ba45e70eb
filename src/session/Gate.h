#pragma once

namespace veilkeep {

// The password that protects the application. Main thread.
class Gate {
public:
    virtual ~Gate() = default;

    virtual bool operationAllowedWithoutAsking() const = 0;

    // Asks for the password where it has to; that takes as long as a person needs.
    virtual bool operationAllowed() = 0;

protected:
    Gate() = default;
    Gate(const Gate&) = default;
    Gate& operator=(const Gate&) = default;
};

} // namespace veilkeep
