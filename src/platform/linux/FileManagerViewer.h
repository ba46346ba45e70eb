#pragma once

#include "core/base/Error.h"
#include "platform/Applications.h"
#include "platform/FileViewer.h"
#include "platform/linux/BusLink.h"

#include <QObject>

#include <functional>
#include <string>

namespace veilkeep {

// Asks whichever file manager the bus knows, which is started for it; where none answers the folder is opened
// by its default application. Waits for nobody. Main thread.
class FileManagerViewer : public QObject, public FileViewer {
public:
    using Trouble = std::function<void(const Error&)>; // for the user: nothing could be shown
    using NewToken = std::function<QString()>;         // by which the file manager may take the focus

    FileManagerViewer(BusLink& sessionBus, Applications& applications, Trouble trouble = {},
                      NewToken newToken = {});

    void selectFile(const std::string& path) override;

private:
    void openFolderOf(const std::string& path);
    void tell(const Error& error) const;

    BusLink& m_bus;
    Applications& m_applications;
    Trouble m_trouble;
    NewToken m_newToken;
};

} // namespace veilkeep
