#pragma once

#include "core/process/Tick.h"
#include "core/tracking/VolumeMounter.h"

#include <QDBusMessage>
#include <QString>
#include <QVariant>

namespace veilkeep {

// Mounts through udisks, where a file manager would mount the volume too. Belongs to one thread, on which the
// tick is called while it waits.
class UdisksVolumeMounter : public VolumeMounter {
public:
    explicit UdisksVolumeMounter(Tick tick = {});

    Result<void> mount(const std::string& uuid, Asking asking) override;

private:
    Result<void> mountDevice(const QString& device, Asking asking);
    bool isMounted(const QString& device);
    QDBusMessage call(const QString& object, const QString& interface, const QString& method,
                      const QVariantList& arguments, Asking asking);

    Tick m_tick;
};

} // namespace veilkeep
