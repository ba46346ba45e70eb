#include "worker/traces/ActivityStatistics.h"

#include "core/base/Utf8.h"

#include <gio/gio.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

namespace veilkeep {
namespace {

constexpr const char* activityManager = "org.kde.ActivityManager";

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
    void operator()(GVariant* variant) const { g_variant_unref(variant); }
};
using Connection = std::unique_ptr<GDBusConnection, Unref>;
using Variant = std::unique_ptr<GVariant, Unref>;

// Cancels what takes longer: a bus may take calls and never answer.
class Deadline {
public:
    explicit Deadline(std::chrono::milliseconds limit)
        : m_cancellable(g_cancellable_new()), m_thread([this, limit] { cancelAfter(limit); }) {}
    ~Deadline() {
        {
            const std::scoped_lock lock(m_mutex);
            m_done = true;
        }
        m_isDone.notify_one();
        m_thread.join();
    }
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;

    GCancellable* cancellable() const { return m_cancellable.get(); }

private:
    void cancelAfter(std::chrono::milliseconds limit) {
        std::unique_lock lock(m_mutex);
        if (!m_isDone.wait_for(lock, limit, [this] { return m_done; }))
            g_cancellable_cancel(m_cancellable.get());
    }

    std::unique_ptr<GCancellable, Unref> m_cancellable;
    std::mutex m_mutex;
    std::condition_variable m_isDone;
    bool m_done = false;
    std::thread m_thread; // last: it uses the others
};

Connection connectTo(const std::string& address, const Deadline& deadline) {
    constexpr auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                             G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    return Connection(g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr,
                                                             deadline.cancellable(), nullptr));
}

bool runs(const Connection& bus, const Deadline& deadline) {
    const Variant answer(g_dbus_connection_call_sync(
        bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner",
        g_variant_new("(s)", activityManager), G_VARIANT_TYPE("(b)"), G_DBUS_CALL_FLAGS_NONE, -1,
        deadline.cancellable(), nullptr));
    gboolean has = FALSE;
    if (answer)
        g_variant_get(answer.get(), "(b)", &has);
    return has;
}

bool forget(const Connection& bus, const std::string& pattern, const Deadline& deadline) {
    const Variant answer(
        g_dbus_connection_call_sync(bus.get(), activityManager, "/ActivityManager/Resources/Scoring",
                                    "org.kde.ActivityManager.ResourcesScoring", "DeleteStatsForResource",
                                    g_variant_new("(sss)", ":any", ":any", pattern.c_str()), nullptr,
                                    G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, deadline.cancellable(), nullptr));
    return answer != nullptr;
}

// A star stands for any text in what the activity manager takes.
std::string patternOf(const std::string& path) {
    std::string pattern;
    for (const char byte : path) {
        if (byte == '*' || byte == '\\')
            pattern.push_back('\\');
        pattern.push_back(byte);
    }
    return pattern;
}

} // namespace

Result<void> removeActivityStatistics(const std::string& busAddress, const TracedItems& items,
                                      std::chrono::milliseconds limit) {
    const Deadline deadline(limit);
    const Connection bus = busAddress.empty() ? Connection() : connectTo(busAddress, deadline);
    if (!bus || !runs(bus, deadline))
        return {};
    bool allForgotten = true;
    for (const TracedItems::Item& item : items.items())
        for (const std::string& path : item.paths) {
            if (!isWellFormedUtf8(path))
                continue; // it cannot have heard of it
            const std::string pattern = patternOf(path);
            allForgotten = forget(bus, pattern, deadline) && allForgotten;
            if (item.isDirectory)
                allForgotten = forget(bus, pattern + "/*", deadline) && allForgotten;
        }
    if (!allForgotten)
        return Error{ErrorCode::System, "DeleteStatsForResource", {}, 0};
    return {};
}

} // namespace veilkeep
