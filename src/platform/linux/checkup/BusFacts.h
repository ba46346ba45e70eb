#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

// What both message buses tell. Whoever gave no answer in time, or none that makes sense, has told nothing.
namespace veilkeep {

enum class BusReach {
    Missing,     // no address, or nobody listens there
    Elsewhere,   // no socket of this machine: it is not asked, since that could take any time
    NotAnswered, // somebody listens who does not answer as a bus does
    Reached,
};

enum class ServiceState { Absent, Startable, Running }; // startable: by the bus, as soon as it is needed

struct ScreenSaverFact {
    QString name;
    bool hasAnswered = false;
};

struct SessionBusFacts {
    BusReach reach = BusReach::Missing;
    bool areNamesTold = false; // who is on the bus; else all below is as unknown
    bool isTrayThere = false;
    std::optional<bool> hasTrayHost = {};
    std::vector<ScreenSaverFact> screenSavers = {};
    bool isHintingLockerThere = false; // that always tells logind
    bool isApplicationThere = false;
    bool isListServed = false; // by the application, or by "watch"
};

struct LogindFacts {
    ServiceState service = ServiceState::Absent;
    std::optional<bool> isSessionFound = {};
    std::optional<bool> isLockTold = {};   // the session has a hint of it at all
    std::optional<bool> canHoldSleep = {}; // for the seconds that hiding takes
    QString whyNot = {};                   // logind's words where it refused that
};

struct PolkitFacts {
    enum class Answer { None, Granted, AfterQuestion, Refused, UnknownAction };

    ServiceState service = ServiceState::Absent;
    Answer answer = Answer::None; // to whether items may be moved as administrator
};

struct SystemBusFacts {
    BusReach reach = BusReach::Missing;
    bool areNamesTold = false;
    LogindFacts logind = {};
    PolkitFacts polkit = {};
    ServiceState udisks = ServiceState::Absent;
    ServiceState packageKit = ServiceState::Absent;
};

} // namespace veilkeep
