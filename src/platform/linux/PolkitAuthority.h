#pragma once

#include "core/process/Tick.h"
#include "core/protocol/RightsAuthority.h"
#include "platform/linux/PolkitTypes.h"

#include <QString>
#include <QVariant>

#include <optional>

namespace veilkeep {

class SystemBus;

// Asks polkit, over the system bus, about this process. What it cannot be asked is told in the log. Belongs
// to one thread, on which the tick is called while a question is open.
class PolkitAuthority : public RightsAuthority {
public:
    explicit PolkitAuthority(Tick tick = {});

    Answer check(const std::string& action, Interaction interaction) override;
    Answer giveUp(const std::string& action) override;

    // Ends the question that is open, whose answer is Dismissed then; for the tick to call. Nothing where
    // none is open.
    void cancel();

private:
    std::optional<PolkitResult> ask(const std::string& action, Interaction interaction);
    std::optional<QVariantList> call(const QString& method, const QVariantList& arguments,
                                     Interaction interaction);

    Tick m_tick;
    const SystemBus* m_questionBus = nullptr; // while a question is open: polkit takes an end from there only
    bool m_isCancelled = false;
};

} // namespace veilkeep
