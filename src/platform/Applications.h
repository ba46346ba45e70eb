#pragma once

#include "core/base/Result.h"

#include <QString>

#include <optional>
#include <string>
#include <vector>

namespace veilkeep {

// One installed application. The identifier names it to Applications; the version is empty where it is not
// known.
struct InstalledApplication {
    QString identifier;
    QString name;
    QString version;
    QString iconName; // of the desktop's icon theme, or an absolute path

    bool operator==(const InstalledApplication&) const = default;
};

// The desktop's applications. Errors name the item: ENOENT where it is missing, ENOTSUP where no application
// takes it or none has the identifier. Without an error the application was started, or asked to open the
// item. Main thread.
class Applications {
public:
    struct ForItem {
        std::optional<InstalledApplication> defaultApplication;
        std::vector<InstalledApplication> all; // in the desktop's order
    };

    virtual ~Applications() = default;

    virtual ForItem applicationsFor(const std::string& path) = 0;
    virtual std::vector<InstalledApplication> everyApplication() = 0; // to choose among, by name

    [[nodiscard]] virtual Result<void> open(const std::string& path) = 0; // with its default application
    [[nodiscard]] virtual Result<void> openWith(const QString& identifier, const std::string& path) = 0;

protected:
    Applications() = default;
    Applications(const Applications&) = default;
    Applications& operator=(const Applications&) = default;
};

} // namespace veilkeep
