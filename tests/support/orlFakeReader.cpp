// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlFakeReader.h"

#include <orlPlatform.h>

#include <algorithm>
#include <chrono>
#include <clocale>
#include <filesystem>
#include <iterator>
#include <utility>

#include <pthread.h>

using namespace ORL_0_81;

namespace orlTest {

namespace {

std::size_t entriesOf(char const* folder) {
    std::error_code error;
    std::filesystem::directory_iterator const entries(folder, error);
    if (error) {
        return 0;
    }
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

} // namespace

Answer Answer::document(std::string const& text) {
    Answer answer;
    answer.writes = true;
    answer.text = text;
    return answer;
}

Answer Answer::failure(Status::Type code) {
    Answer answer;
    answer.status = code;
    return answer;
}

Answer Answer::after(std::function<void()> action) const {
    Answer answer = *this;
    answer.before = std::move(action);
    return answer;
}

/// Counts a call as under way for as long as it lives.
class FakeReader::Call {
public:
    Call(FakeReader& reader, Question question) : m_reader(reader) {
        std::lock_guard<std::mutex> const lock(m_reader.m_mutex);
        m_reader.m_questions.push_back(std::move(question));
        ++m_reader.m_inside;
        m_reader.m_maximumInside = std::max(m_reader.m_maximumInside, m_reader.m_inside);
        m_reader.m_asked.notify_all();
    }
    Call(Call const&) = delete;
    Call& operator=(Call const&) = delete;
    ~Call() {
        std::lock_guard<std::mutex> const lock(m_reader.m_mutex);
        --m_reader.m_inside;
        ++m_reader.m_ended;
    }

private:
    FakeReader& m_reader;
};

FakeReader::FakeReader() : m_otherwise(Answer::failure(Status::kFileNotFound)) {}

FakeReader::~FakeReader() {
    if (onDestruction) {
        onDestruction();
    }
}

void FakeReader::on(std::string const& path, Answer const& answer) { on(path, std::vector<Answer>{answer}); }

void FakeReader::on(std::string const& path, std::vector<Answer> const& answers) {
    m_answers[path] = answers;
}

void FakeReader::onAnyOther(Answer const& answer) { m_otherwise = answer; }

std::vector<Question> FakeReader::questions() const {
    std::lock_guard<std::mutex> const lock(m_mutex);
    return m_questions;
}

std::vector<std::string> FakeReader::paths() const {
    std::vector<std::string> result;
    for (Question const& question : questions()) {
        result.push_back(question.path);
    }
    return result;
}

int FakeReader::inside() const {
    std::lock_guard<std::mutex> const lock(m_mutex);
    return m_inside;
}

int FakeReader::maximumInside() const {
    std::lock_guard<std::mutex> const lock(m_mutex);
    return m_maximumInside;
}

int FakeReader::ended() const {
    std::lock_guard<std::mutex> const lock(m_mutex);
    return m_ended;
}

void FakeReader::waitForQuestions(std::size_t count) const {
    std::unique_lock<std::mutex> lock(m_mutex);
    m_asked.wait(lock, [&] { return m_questions.size() >= count; });
}

Answer FakeReader::answerOf(std::string const& path) {
    std::lock_guard<std::mutex> const lock(m_mutex);
    auto const found = m_answers.find(path);
    if (found == m_answers.end()) {
        return m_otherwise;
    }
    std::vector<Answer> const& answers = found->second;
    return answers[std::min(m_given[path]++, answers.size() - 1)];
}

Status FakeReader::readMediaMetadata(String const& path, Bounds const& bounds, Time const& time,
                                     String& metadata) {
    String threadName;
    Platform::getThreadName(threadName);
    std::string const asked(path.data(), path.size());
    Call const call(*this, {asked,
                            {bounds.getCenterX(), bounds.getCenterY(), bounds.getSizeX(), bounds.getSizeY()},
                            time.getNbTicks(),
                            time.getRate().getNumerator(),
                            time.getRate().getDenominator(),
                            metadata.empty() ? std::string() : std::string(metadata.data(), metadata.size()),
                            threadName.empty() ? std::string() : std::string(threadName.asChar()),
                            std::this_thread::get_id(),
                            LocaleKeeper::current()});
    Answer const answer = answerOf(asked);
    if (answer.before) {
        answer.before();
    }
    if (answer.writes) {
        metadata = String(answer.text.data(), answer.text.size());
    }
    if (answer.last) {
        answer.last();
    }
    return answer.status;
}

void Turnstile::let(int count) {
    std::lock_guard<std::mutex> const lock(m_mutex);
    m_free += count;
    m_changed.notify_all();
}

void Turnstile::pass() {
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait(lock, [this] { return m_free > 0; });
    --m_free;
}

void WithReader::TearDown() {
    if (m_reader) {
        EXPECT_EQ(m_reader->refcount(), 1) << "somebody still holds the reader";
        m_reader.reset();
    }
    EXPECT_EQ(Service::getService(Service::kMediaMetadataReaderService), nullptr);
}

LocaleKeeper::LocaleKeeper() : m_locale(current()) {}

LocaleKeeper::~LocaleKeeper() { std::setlocale(LC_ALL, m_locale.c_str()); }

bool LocaleKeeper::goAbroad() {
    for (char const* const name : {"C.UTF-8", "en_US.UTF-8", "de_DE.UTF-8"}) {
        if (std::setlocale(LC_ALL, name) != nullptr) {
            return current() != "C";
        }
    }
    return false;
}

std::string LocaleKeeper::current() {
    char const* const name = std::setlocale(LC_ALL, nullptr);
    return name == nullptr ? "" : name;
}

#if defined(__GLIBC__)

bool ThreadDoor::works() { return true; }

// A stack as large as the whole address space is never to be had.
void ThreadDoor::shut() {
    std::lock_guard<std::mutex> const lock(m_mutex);
    if (m_shut) {
        return;
    }
    pthread_attr_t attributes;
    pthread_getattr_default_np(&attributes);
    pthread_attr_getstacksize(&attributes, &m_size);
    pthread_attr_setstacksize(&attributes, std::size_t{1} << 47);
    m_shut = pthread_setattr_default_np(&attributes) == 0;
    pthread_attr_destroy(&attributes);
}

void ThreadDoor::open() {
    std::lock_guard<std::mutex> const lock(m_mutex);
    if (!m_shut) {
        return;
    }
    pthread_attr_t attributes;
    pthread_getattr_default_np(&attributes);
    pthread_attr_setstacksize(&attributes, m_size);
    pthread_setattr_default_np(&attributes);
    pthread_attr_destroy(&attributes);
    m_shut = false;
}

#else

bool ThreadDoor::works() { return false; }
void ThreadDoor::shut() { m_shut = false; }
void ThreadDoor::open() { m_size = 0; }

#endif

std::size_t threadCount() { return entriesOf("/proc/self/task"); }

std::size_t fileCount() { return entriesOf("/proc/self/fd"); }

std::size_t quietThreadCount() {
    using namespace std::chrono_literals;
    std::size_t least = threadCount();
    for (int i = 0; i < 20; ++i) {
        std::this_thread::sleep_for(1ms);
        least = std::min(least, threadCount());
    }
    return least;
}

bool threadCountBecomes(std::size_t count) {
    using namespace std::chrono_literals;
    for (int i = 0; i < 10000; ++i) {
        if (threadCount() == count) {
            return true;
        }
        std::this_thread::sleep_for(1ms);
    }
    return false;
}

} // namespace orlTest
