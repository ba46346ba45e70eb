#include "filelist/DeepSearch.h"

#include "core/tracking/AliasResolver.h"
#include "filelist/MainThread.h"

#include <string_view>
#include <thread>
#include <utility>

namespace veilkeep {

struct DeepSearch::Run {
    explicit Run(std::vector<ListedFile> itsFiles) : files(std::move(itsFiles)) {
        aliases.reserve(files.size());
        for (const ListedFile& file : files)
            aliases.emplace_back(file->alias().value_or(std::string_view()));
    }
    ~Run() {
        resolver.cancel();
        if (thread.joinable())
            thread.join();
    }

    std::vector<ListedFile> files; // for the main thread alone
    std::vector<std::string> aliases;
    std::vector<AliasResolver::Answer> answers;
    AliasResolver resolver{AliasResolver::Reach::WholeVolume};
    std::thread thread;
};

DeepSearch::DeepSearch() = default;
DeepSearch::~DeepSearch() = default;

void DeepSearch::search(const std::vector<ListedFile>& files) {
    for (const ListedFile& file : files)
        if (m_open.insert(file.get()).second)
            m_waiting.push_back(file);
    if (!m_run)
        startNext();
}

void DeepSearch::cancel() {
    for (const ListedFile& file : std::exchange(m_waiting, {}))
        m_open.erase(file.get());
    if (m_run)
        m_run->resolver.cancel();
}

std::uint64_t DeepSearch::directoriesSeen() const {
    return m_run ? m_run->resolver.directoriesSeen() : 0;
}

void DeepSearch::startNext() {
    if (m_waiting.empty()) {
        emit finished();
        return;
    }
    m_run = std::make_unique<Run>(std::exchange(m_waiting, {}));
    m_run->thread = std::thread([this, run = m_run.get()] {
        const std::vector<std::string_view> records(run->aliases.begin(), run->aliases.end());
        const auto found = [this](std::size_t number, const std::string& path) {
            MainThread::post(this, [this, number, path] { tell(number, Outcome::Found, path); });
        };
        run->answers = run->resolver.resolve(records, AliasResolver::Mounting::Never, found);
        MainThread::post(this, [this] { runEnded(); });
    });
}

void DeepSearch::tell(std::size_t number, Outcome outcome, const std::string& path) {
    const ListedFile file = m_run->files[number];
    if (m_open.erase(file.get()) > 0)
        emit ended(file, outcome, path);
}

void DeepSearch::runEnded() {
    using AnswerOutcome = AliasResolver::Answer::Outcome;
    for (std::size_t number = 0; number < m_run->answers.size(); ++number) {
        const AliasResolver::Answer& answer = m_run->answers[number];
        if (answer.outcome == AnswerOutcome::VolumeAbsent)
            tell(number, Outcome::VolumeAbsent, {});
        else if (answer.outcome != AnswerOutcome::Cancelled)
            tell(number, Outcome::Missing, {}); // found ones are told already
    }
    for (const ListedFile& file : m_run->files)
        m_open.erase(file.get());
    m_run.reset();
    startNext();
}

} // namespace veilkeep
