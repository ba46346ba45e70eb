#pragma once

#include "core/process/Tick.h"
#include "core/protocol/RightsAuthority.h"
#include "platform/linux/PolkitTypes.h"

#include <QString>
#include <QVariant>

#include <optional>

namespace veilkeep {

// Asks polkit, over the system bus, about this process. What it cannot be asked is told in the log. Belongs
// to one thread, on which the tick is called while a question is open.
class PolkitAuthority : public RightsAuthority {
public:
    explicit PolkitAuthority(Tick tick = {});

    Answer check(const std::string& action, Interaction interaction) override;
    Answer giveUp(const std::string& action) override;

private:
    std::optional<PolkitResult> ask(const std::string& action, Interaction interaction);
    std::optional<QVariantList> call(const QString& method, const QVariantList& arguments,
                                     Interaction interaction);

    Tick m_tick;
};

} // namespace veilkeep
