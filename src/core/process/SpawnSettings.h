#pragma once

#include <spawn.h>
#include <sys/types.h>

#include <string>
#include <vector>

namespace veilkeep {

// The settings of one posix_spawn call; the first of them that failed is remembered.
class SpawnSettings {
public:
    static constexpr int firstOtherDescriptor = 3; // beside the standard streams

    SpawnSettings();
    ~SpawnSettings();
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    void openNullDevice(int descriptor);
    void duplicate(int from, int to);
    void closeOthers();
    void startIn(const std::string& directory);
    void useOwnSession();

    // Default answers to signals, and none blocked but, where they are deferred, SIGTERM, SIGHUP and SIGINT.
    void useCleanSignals(bool deferEndingSignals);

    // The program's own name is put before the arguments. 0 or errno.
    int spawn(pid_t& child, const std::string& program, const std::vector<std::string>& arguments,
              char* const* environment);

private:
    void note(int failure);

    posix_spawn_file_actions_t m_actions;
    posix_spawnattr_t m_attributes;
    int m_flags = 0;
    int m_failure = 0;
};

// As exec wants it. The texts are not written to, and must outlive it.
std::vector<char*> pointersTo(const std::vector<std::string>& texts);

} // namespace veilkeep
