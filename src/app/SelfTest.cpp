#include "app/SelfTest.h"

#include "core/environment/Bundle.h"
#include "core/environment/XdgDirectories.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/protocol/CloakWorkerComunicator.h"
#include "format/ErrorText.h"
#include "widgets/images/ProgramImages.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <unistd.h>

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace veilkeep {
namespace {

// Why it does not work; empty where it does.
using Trouble = std::string;

struct Check {
    const char* what;
    std::function<Trouble()> look;
};

Trouble programsTrouble() {
    for (const char* program : {"cloakWorker", "cloakTraces", "veilkeepctl"}) {
        const std::string path = bundledProgramPath(applicationBundlePath(), program);
        if (::access(path.c_str(), X_OK) != 0)
            return path + " is missing or cannot be run";
    }
    return {};
}

Trouble resourcesTrouble() {
    for (const char* resource : {"Info.plist", "Resources/drop.aif", "Resources/guide/index.html"}) {
        const std::string path = applicationBundlePath() + "/Contents/" + resource;
        if (::access(path.c_str(), R_OK) != 0)
            return path + " is missing or cannot be read";
    }
    return {};
}

Trouble imagesTrouble() {
    for (const char* name : {"com.ostrel.Veilkeep", Group::defaultIconName, "MultipleSelection"})
        if (programImage::named(QLatin1String(name)).pixmap(42, 42).isNull())
            return std::string("the image ") + name + " cannot be drawn";
    return {};
}

Trouble placesTrouble() {
    const OwnPlaces places = OwnPlaces::current();
    for (const std::string& directory : {places.dataDirectory, places.stateDirectory}) {
        if (directory.empty())
            return "there is no home folder";
        if (const auto made = makeDirectories(directory, 0700); !made)
            return made.error().path + ": " + errorReason(made.error()).toStdString();
        if (::access(directory.c_str(), W_OK) != 0)
            return directory + " cannot be written to";
    }
    return {};
}

Trouble moveTrouble() {
    const std::string cache = XdgDirectories::current().cacheHome;
    if (const auto made = makeDirectories(cache, 0700); !made)
        return made.error().path + ": " + errorReason(made.error()).toStdString();
    const QTemporaryDir folder(QFile::decodeName(cache.c_str()) +
                               QStringLiteral("/veilkeep-self-test-XXXXXX"));
    const std::string item = QFile::encodeName(folder.filePath(QStringLiteral("item.txt"))).toStdString();
    QFile file(QFile::decodeName(item.c_str()));
    if (!file.open(QIODevice::WriteOnly))
        return item + ": " + file.errorString().toStdString();
    file.close();
    CloakWorkerComunicator worker(bundledProgramPath(applicationBundlePath(), "cloakWorker"),
                                  folder.path().toStdString() + "/InProgress");
    const CloakWorkerResult hidden = worker.hideFileWithPath(item);
    if (hidden.errorCode() != 0 || itemExistsAt(item))
        return "hiding: " + workerErrorText(hidden.errorCode()).toStdString();
    const CloakWorkerResult shown = worker.unhideFileWithPath(hidden.newFileName());
    if (shown.errorCode() != 0 || !itemExistsAt(item))
        return "bringing back: " + workerErrorText(shown.errorCode()).toStdString();
    return {};
}

} // namespace

int runSelfTest() {
    const std::vector<Check> checks{
        {"the programs are there", programsTrouble},         {"what they need is there", resourcesTrouble},
        {"the images can be drawn", imagesTrouble},          {"lists and log have a place", placesTrouble},
        {"an item is hidden and brought back", moveTrouble},
    };
    int status = 0;
    for (const Check& check : checks) {
        const Trouble trouble = check.look();
        std::printf("%s: %s%s%s\n", trouble.empty() ? "ok" : "FAILED", check.what,
                    trouble.empty() ? "" : ": ", trouble.c_str());
        if (!trouble.empty())
            status = 1;
    }
    return std::fflush(stdout) == 0 ? status : 1;
}

} // namespace veilkeep
