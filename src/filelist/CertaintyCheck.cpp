#include "filelist/CertaintyCheck.h"

#include "filelist/MainThread.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <system_error>
#include <utility>

namespace veilkeep {
namespace {

constexpr std::size_t partSize = 1000; // copied within a millisecond or two

std::vector<char> areCertainlyAtTheirPlaces(const std::vector<File>& files) {
    std::vector<char> areCertain;
    areCertain.reserve(files.size());
    for (const File& file : files)
        areCertain.push_back(file.isCertainlyAtItsPlace());
    return areCertain;
}

} // namespace

void CertaintyCheck::check(const Files& files) {
    m_files = files;
    m_next = 0;
    ++m_run;
    startPart();
}

void CertaintyCheck::startPart() {
    if (m_next == m_files.size()) {
        m_files = {};
        m_next = 0;
        emit finished();
        return;
    }
    const auto copies = std::make_shared<std::vector<File>>();
    const std::size_t end = std::min(m_next + partSize, m_files.size());
    for (std::size_t number = m_next; number < end; ++number)
        copies->push_back(*m_files[number]);
    const auto work = [this, run = m_run, copies] {
        try {
            MainThread::post(this, [this, run, areCertain = areCertainlyAtTheirPlaces(*copies)] {
                take(run, areCertain);
            });
        } catch (...) { // as uncaught as on the main thread, where it is reported
            MainThread::post(this, [thrown = std::current_exception()] { std::rethrow_exception(thrown); });
        }
    };
    try {
        m_thread = std::jthread(work);
    } catch (const std::system_error&) { // no thread is to be had
        work();
    }
}

void CertaintyCheck::take(unsigned int run, const std::vector<char>& areCertain) {
    if (run != m_run)
        return;
    Files uncertain;
    for (const char isCertain : areCertain) {
        if (!isCertain)
            uncertain.push_back(m_files[m_next]);
        ++m_next;
    }
    if (!uncertain.empty())
        emit uncertainFound(uncertain);
    startPart();
}

} // namespace veilkeep
