#include "platform/linux/GioApplications.h"

#include "platform/linux/GioLaunch.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <utility>

namespace veilkeep {
namespace {

QString textOf(const char* text) {
    return text ? QString::fromUtf8(text) : QString();
}

// The local files' own interface: the desktop's would load what reaches network places.
GObjectPointer<GFile> localFile(const std::string& path) {
    return GObjectPointer<GFile>(g_vfs_get_file_for_path(g_vfs_get_local(), path.c_str()));
}

GText contentTypeOf(const std::string& path) {
    const GObjectPointer<GFile> file = localFile(path);
    const GObjectPointer<GFileInfo> about(g_file_query_info(
        file.get(), G_FILE_ATTRIBUTE_STANDARD_CONTENT_TYPE, G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
    return GText(g_strdup(about ? g_file_info_get_content_type(about.get()) : nullptr));
}

QString iconNameOf(GAppInfo* application) {
    GIcon* const icon = g_app_info_get_icon(application);
    if (G_IS_THEMED_ICON(icon)) {
        const char* const* const names = g_themed_icon_get_names(G_THEMED_ICON(icon));
        return names ? textOf(names[0]) : QString();
    }
    if (!G_IS_FILE_ICON(icon))
        return {};
    return textOf(GText(g_file_get_path(g_file_icon_get_file(G_FILE_ICON(icon)))).get());
}

// Desktop files have no version of the application; those made for AppImages name it.
InstalledApplication describe(GAppInfo* application) {
    InstalledApplication described{textOf(g_app_info_get_id(application)),
                                   textOf(g_app_info_get_name(application)),
                                   {},
                                   iconNameOf(application)};
    if (G_IS_DESKTOP_APP_INFO(application)) {
        const GText version(
            g_desktop_app_info_get_string(G_DESKTOP_APP_INFO(application), "X-AppImage-Version"));
        described.version = textOf(version.get());
    }
    return described;
}

// Takes over the list and what it holds.
std::vector<InstalledApplication> describeAll(GList* applications, bool (*isWanted)(GAppInfo*)) {
    std::vector<InstalledApplication> described;
    for (const GList* link = applications; link; link = link->next)
        if (auto* const application = static_cast<GAppInfo*>(link->data); isWanted(application))
            described.push_back(describe(application));
    g_list_free_full(applications, g_object_unref);
    return described;
}

Result<void> findItem(const std::string& path) {
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0)
        return Error::system("stat", path, errno);
    return {};
}

} // namespace

GioApplications::GioApplications(LateTrouble lateTrouble, NewToken newToken)
    : m_lateTrouble(std::move(lateTrouble)), m_newToken(std::move(newToken)) {}

Applications::ForItem GioApplications::applicationsFor(const std::string& path) {
    ForItem found;
    const GText type = contentTypeOf(path);
    if (!type)
        return found;
    const GObjectPointer<GAppInfo> byDefault(g_app_info_get_default_for_type(type.get(), FALSE));
    if (byDefault)
        found.defaultApplication = describe(byDefault.get());
    found.all = describeAll(g_app_info_get_all_for_type(type.get()), [](GAppInfo*) { return true; });
    return found;
}

std::vector<InstalledApplication> GioApplications::everyApplication() {
    std::vector<InstalledApplication> all =
        describeAll(g_app_info_get_all(), [](GAppInfo* one) { return g_app_info_should_show(one) != FALSE; });
    std::ranges::sort(all, [](const InstalledApplication& left, const InstalledApplication& right) {
        const int order = QString::localeAwareCompare(left.name, right.name);
        return order != 0 ? order < 0 : left.identifier < right.identifier;
    });
    return all;
}

Result<void> GioApplications::open(const std::string& path) {
    if (auto found = findItem(path); !found)
        return found;
    const GText type = contentTypeOf(path);
    const GObjectPointer<GAppInfo> application(type ? g_app_info_get_default_for_type(type.get(), FALSE)
                                                    : nullptr);
    if (!G_IS_DESKTOP_APP_INFO(application.get()))
        return Error::system("open", path, ENOTSUP);
    return launchApplication(*G_DESKTOP_APP_INFO(application.get()), path,
                             m_newToken ? m_newToken() : std::string(), m_lateTrouble);
}

Result<void> GioApplications::openWith(const QString& identifier, const std::string& path) {
    if (auto found = findItem(path); !found)
        return found;
    const GObjectPointer<GDesktopAppInfo> application(
        g_desktop_app_info_new(identifier.toUtf8().constData()));
    if (!application)
        return Error::system("openWith", path, ENOTSUP);
    return launchApplication(*application, path, m_newToken ? m_newToken() : std::string(), m_lateTrouble);
}

} // namespace veilkeep
