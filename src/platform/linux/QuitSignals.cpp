#include "platform/linux/QuitSignals.h"

#include "core/base/Error.h"
#include "core/log/Log.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <utility>

namespace veilkeep {
namespace {

std::atomic<int> writer = -1;
static_assert(std::atomic<int>::is_always_lock_free);

// A full pipe holds a byte of an earlier signal: that is enough.
void note(int /*signal*/) {
    const int error = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t count = ::write(writer, &byte, 1);
    errno = error;
}

} // namespace

void QuitSignals::start() {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) {
        logError("Signals end this program at once", Error::system("pipe2", {}, errno));
        return;
    }
    m_reader.reset(ends[0]);
    m_writer.reset(ends[1]);
    writer = m_writer.get();
    m_notifier = std::make_unique<QSocketNotifier>(m_reader.get(), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &QuitSignals::drain);
    struct sigaction action = {};
    action.sa_handler = note;
    action.sa_flags = SA_RESTART;
    for (std::size_t index = 0; index < numbers.size(); ++index)
        m_isTaken[index] = ::sigaction(numbers[index], nullptr, &m_before[index]) == 0 &&
                           m_before[index].sa_handler != SIG_IGN &&
                           ::sigaction(numbers[index], &action, nullptr) == 0;
}

QuitSignals::~QuitSignals() {
    for (std::size_t index = 0; index < numbers.size(); ++index)
        if (m_isTaken[index])
            ::sigaction(numbers[index], &m_before[index], nullptr);
    if (m_writer)
        writer = -1;
}

void QuitSignals::drain() {
    char bytes[64];
    while (::read(m_reader.get(), bytes, sizeof bytes) > 0)
        continue;
    if (!std::exchange(m_isTold, true))
        emit quitAsked();
}

} // namespace veilkeep
