// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TEST_SUPPORT_ORL_FAKE_READER_H
#define ORL_TEST_SUPPORT_ORL_FAKE_READER_H

#include "support/TimeLimit.h"
#include "support/TimelineText.h"

#include <orlMediaMetadataReader.h>

#include <gtest/gtest.h>

#include <array>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace orlTest {

/// One call of a reader.
struct Question {
    std::string path;
    std::array<double, 4> bounds; ///< centre x and y, size x and y
    long long ticks;
    int numerator;
    unsigned int denominator;
    std::string metadata; ///< what the caller's text held
    std::string threadName;
    std::thread::id thread;
    std::string locale;
};

/// What a reader does when it is asked.
struct Answer {
    ORL_0_81::Status status;
    bool writes = false; ///< whether `text` goes to the caller, whatever the status
    std::string text;
    std::function<void()> last;   ///< runs in the end; is there to throw
    std::function<void()> before; ///< runs first, on the thread that asks

    static Answer document(std::string const& text);
    static Answer failure(ORL_0_81::Status::Type code);

    template <class E>
    static Answer exceptionOf(E const& e) {
        Answer answer;
        answer.last = [e] { throw e; };
        return answer;
    }

    /// The same after an action, which may block.
    Answer after(std::function<void()> action) const;
};

/// A reader that looks into no file: it answers as a test told it, and records who asked what.
///
/// Is told everything before it is asked. May be asked on many threads.
class FakeReader : public ORL_0_81::MediaMetadataReader {
public:
    FakeReader();
    ~FakeReader() override;

    /// Answers a path; the second question for a path gets the second answer, the last answer is repeated.
    void on(std::string const& path, Answer const& answer);
    void on(std::string const& path, std::vector<Answer> const& answers);

    /// Answers all other paths, which else fail with kFileNotFound.
    void onAnyOther(Answer const& answer);

    /// Is called by the destructor.
    std::function<void()> onDestruction;

    /// All questions, in the order in which they came.
    std::vector<Question> questions() const;

    /// Their paths.
    std::vector<std::string> paths() const;

    /// How many calls are under way, how many were at most, and how many have ended.
    int inside() const;
    int maximumInside() const;
    int ended() const;

    /// Blocks until that many questions have come.
    void waitForQuestions(std::size_t count) const;

    ORL_0_81::Status readMediaMetadata(ORL_0_81::String const& path, ORL_0_81::Bounds const& bounds,
                                       ORL_0_81::Time const& time, ORL_0_81::String& metadata) override;

private:
    class Call;

    Answer answerOf(std::string const& path);

    mutable std::mutex m_mutex;
    mutable std::condition_variable m_asked;
    std::map<std::string, std::vector<Answer>> m_answers;
    std::map<std::string, std::size_t> m_given;
    Answer m_otherwise;
    std::vector<Question> m_questions;
    int m_inside = 0;
    int m_maximumInside = 0;
    int m_ended = 0;
};

/// Lets in as many as it was told to.
class Turnstile {
public:
    void let(int count);
    void pass();

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_free = 0;
};

/// Tests with a registered fake reader, which the end of the test takes away.
class WithReader : public testing::Test {
protected:
    void TearDown() override;

    ORL_0_81::SharedPtr<FakeReader> m_reader{new FakeReader};

private:
    TimeLimit m_limit{"a test with a reader"};
};

/// Puts the process's locale back at its end.
class LocaleKeeper {
public:
    LocaleKeeper();
    LocaleKeeper(LocaleKeeper const&) = delete;
    LocaleKeeper& operator=(LocaleKeeper const&) = delete;
    ~LocaleKeeper();

    /// Leaves the "C" locale. \returns false if the system has no other.
    static bool goAbroad();
    static std::string current();

private:
    std::string m_locale;
};

/// Makes each start of a thread fail while it is shut.
class ThreadDoor {
public:
    ThreadDoor() = default;
    ThreadDoor(ThreadDoor const&) = delete;
    ThreadDoor& operator=(ThreadDoor const&) = delete;
    ~ThreadDoor() { open(); }

    /// Whether this system knows how.
    static bool works();

    void shut();
    void open();

private:
    std::mutex m_mutex;
    bool m_shut = false;
    std::size_t m_size = 0;
};

/// The threads and the open files of this process; 0 where the system does not tell.
std::size_t threadCount();
std::size_t fileCount();

/// The number of threads once those that have just ended are forgotten, which takes the system a moment.
std::size_t quietThreadCount();

/// Whether the number of threads gets to that in time.
bool threadCountBecomes(std::size_t count);

/// A JSON string of a text without special characters.
inline std::string quoted(std::string const& text) { return "\"" + text + "\""; }

inline std::string joined(std::vector<std::string> const& texts) {
    std::string result;
    for (std::string const& text : texts) {
        result += (result.empty() ? "" : ",") + text;
    }
    return result;
}

/// A JSON array.
inline std::string arrayOf(std::vector<std::string> const& texts) { return "[" + joined(texts) + "]"; }

/// A track in normal form; `kind` is the whole member with its comma, or empty.
inline std::string namedTrack(std::string const& name, std::vector<std::string> const& children,
                              std::string const& kind = "") {
    return R"({"name":)" + quoted(name) + R"(,"OTIO_SCHEMA":"Track.1","children":)" + arrayOf(children) +
           kind + "}";
}

inline std::string stackOf(std::vector<std::string> const& children) {
    return R"({"OTIO_SCHEMA":"Stack.1","children":)" + arrayOf(children) + "}";
}

/// A timeline in normal form.
inline std::string timelineOf(std::vector<std::string> const& stackChildren,
                              std::string const& start = kUndefinedTime, std::string const& name = "") {
    return R"({"tracks":)" + stackOf(stackChildren) + "," + timelineTail(quoted(name), start);
}

/// A timeline in normal form, of one track with these clips.
inline std::string timelineOfClips(std::vector<ClipText> const& clips,
                                   std::string const& start = kUndefinedTime) {
    std::vector<std::string> texts;
    for (ClipText const& clip : clips) {
        texts.push_back(clip.text());
    }
    return timelineOf({namedTrack("", texts)}, start);
}

/// What a reader says of a medium.
inline std::string documentOf(ClipText const& clip) { return timelineOfClips({clip}); }

inline std::string wrapped(std::string const& timeline) { return R"({"timeline":)" + timeline + "}"; }

} // namespace orlTest

#endif // ORL_TEST_SUPPORT_ORL_FAKE_READER_H
