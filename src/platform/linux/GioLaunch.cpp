#include "platform/linux/GioLaunch.h"

#include "core/base/FileUri.h"
#include "core/log/Log.h"

#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <string_view>

namespace veilkeep {
namespace {

struct AskedOverBus {
    std::string path;
    GioApplications::LateTrouble trouble;
};

int errnoOf(const GError& error) {
    if (error.domain == G_SPAWN_ERROR)
        return error.code == G_SPAWN_ERROR_ACCES ? EACCES : ENOEXEC;
    if (g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_PERMISSION_DENIED))
        return EACCES;
    return g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT) ? ETIMEDOUT : EIO;
}

Error errorOf(const GError& error, const std::string& path) {
    return Error::system(std::string("launch (") + error.message + ")", path, errnoOf(error));
}

// What the desktop and the tests told this program is not meant for others.
GObjectPointer<GAppLaunchContext> contextWith(const std::string& token) {
    GObjectPointer<GAppLaunchContext> context(g_app_launch_context_new());
    char** const variables = g_get_environ();
    for (char** variable = variables; *variable; ++variable) {
        const std::string_view text(*variable);
        if (text.starts_with("VEILKEEP_"))
            g_app_launch_context_unsetenv(context.get(), std::string(text.substr(0, text.find('='))).c_str());
    }
    g_strfreev(variables);
    for (const char* const own : {"DESKTOP_AUTOSTART_ID", "DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN",
                                  "DBUS_STARTER_ADDRESS", "DBUS_STARTER_BUS_TYPE"})
        g_app_launch_context_unsetenv(context.get(), own);
    if (!token.empty())
        g_app_launch_context_setenv(context.get(), "XDG_ACTIVATION_TOKEN", token.c_str());
    return context;
}

// In the child, between fork and exec.
void standAlone(gpointer) {
    ::setsid();
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    for (const int number : {SIGTERM, SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGCHLD})
        ::signal(number, SIG_DFL);
}

// GIO's connection to the bus would end this program together with the bus.
GObjectPointer<GDBusConnection> harmlessBus() {
    GObjectPointer<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (bus)
        g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    return bus;
}

void busHasAnswered(GObject* application, GAsyncResult* answer, gpointer data) {
    const std::unique_ptr<AskedOverBus> asked(static_cast<AskedOverBus*>(data));
    GError* failure = nullptr;
    g_app_info_launch_uris_finish(reinterpret_cast<GAppInfo*>(application), answer, &failure);
    if (!failure)
        return;
    const Error error = errorOf(*GErrorPointer(failure), asked->path);
    logError("An application could not be started", error);
    if (asked->trouble)
        asked->trouble(error);
}

} // namespace

Result<void> launchApplication(GDesktopAppInfo& application, const std::string& path,
                               const std::string& token, const GioApplications::LateTrouble& lateTrouble) {
    const GObjectPointer<GDBusConnection> bus = harmlessBus();
    std::string uri = fileUri(path, UriSpelling::GLib);
    GList uris{uri.data(), nullptr, nullptr};
    if (bus && g_desktop_app_info_get_boolean(&application, "DBusActivatable")) {
        auto asked = std::make_unique<AskedOverBus>(AskedOverBus{path, lateTrouble});
        g_app_info_launch_uris_async(G_APP_INFO(&application), &uris, nullptr, nullptr, busHasAnswered,
                                     asked.release());
        return {};
    }
    const GObjectPointer<GAppLaunchContext> context = contextWith(token);
    // What others write about the item belongs to nobody's journal.
    const auto flags = static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_STDOUT_TO_DEV_NULL |
                                                G_SPAWN_STDERR_TO_DEV_NULL);
    GError* failure = nullptr;
    g_desktop_app_info_launch_uris_as_manager(&application, &uris, context.get(), flags, standAlone, nullptr,
                                              nullptr, nullptr, &failure);
    if (failure)
        return errorOf(*GErrorPointer(failure), path);
    return {};
}

} // namespace veilkeep
