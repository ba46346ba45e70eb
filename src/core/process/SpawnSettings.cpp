#include "core/process/SpawnSettings.h"

#include <fcntl.h>
#include <signal.h>

#include <initializer_list>

namespace veilkeep {
namespace {

sigset_t setOf(std::initializer_list<int> numbers) {
    sigset_t set;
    ::sigemptyset(&set);
    for (const int number : numbers)
        ::sigaddset(&set, number);
    return set;
}

} // namespace

SpawnSettings::SpawnSettings() {
    note(::posix_spawn_file_actions_init(&m_actions));
    note(::posix_spawnattr_init(&m_attributes));
}

SpawnSettings::~SpawnSettings() {
    ::posix_spawn_file_actions_destroy(&m_actions);
    ::posix_spawnattr_destroy(&m_attributes);
}

void SpawnSettings::openNullDevice(int descriptor) {
    note(::posix_spawn_file_actions_addopen(&m_actions, descriptor, "/dev/null", O_RDWR, 0));
}

void SpawnSettings::duplicate(int from, int to) {
    note(::posix_spawn_file_actions_adddup2(&m_actions, from, to));
}

void SpawnSettings::closeOthers() {
    note(::posix_spawn_file_actions_addclosefrom_np(&m_actions, firstOtherDescriptor));
}

void SpawnSettings::startIn(const std::string& directory) {
    note(::posix_spawn_file_actions_addchdir_np(&m_actions, directory.c_str()));
}

void SpawnSettings::useOwnSession() {
    m_flags |= POSIX_SPAWN_SETSID;
}

void SpawnSettings::useCleanSignals(bool deferEndingSignals) {
    const sigset_t blocked = deferEndingSignals ? setOf({SIGTERM, SIGHUP, SIGINT}) : setOf({});
    const sigset_t restored = setOf({SIGPIPE, SIGTERM, SIGCHLD, SIGXFSZ});
    note(::posix_spawnattr_setsigmask(&m_attributes, &blocked));
    note(::posix_spawnattr_setsigdefault(&m_attributes, &restored));
    m_flags |= POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
}

int SpawnSettings::spawn(pid_t& child, const std::string& program, const std::vector<std::string>& arguments,
                         char* const* environment) {
    note(::posix_spawnattr_setflags(&m_attributes, static_cast<short>(m_flags)));
    if (m_failure != 0)
        return m_failure;
    std::vector<std::string> command = {program};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return ::posix_spawn(&child, program.c_str(), &m_actions, &m_attributes, pointersTo(command).data(),
                         environment);
}

void SpawnSettings::note(int failure) {
    if (m_failure == 0)
        m_failure = failure;
}

std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (const std::string& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace veilkeep
