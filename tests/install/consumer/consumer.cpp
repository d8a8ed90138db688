// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// An application that uses every kind of thing that the library shares with it: values, containers that the library
// fills and the application frees, classes of the application that the library calls and destroys, exceptions of the
// library that the application catches. It may be built by another compiler, with another standard library.
#include <orlFileSequenceUtils.h>
#include <orlJobDispatcher.h>
#include <orlList.h>
#include <orlMediaMetadataReader.h>
#include <orlPlatform.h>
#include <orlRational.h>
#include <orlSubjectObserver.h>
#include <orlTime.h>
#include <orlTokenResolver.h>
#include <orlVector.h>

#include <atomic>
#include <cstdio>
#include <cstring>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

using namespace ORL_0_81;

namespace {

// Exceptions are the one thing that belongs to a standard library: with another one than the library's, they are caught
// without being known, and none may go through the library.
#ifdef __GLIBCXX__
#define ORL_OUT_OF_RANGE std::out_of_range const&
#else
#define ORL_OUT_OF_RANGE ...
#endif

int failures = 0;

void check(bool isTrue, char const* what) {
    if (!isTrue) {
        std::printf("failed: %s\n", what);
        ++failures;
    }
}

void useStrings() {
    String text("plate");
    String const copy = text;
    text += std::string("_v001.exr").c_str();
    check(text == "plate_v001.exr" && copy == "plate", "a String is changed, its copy is not");
    check(text.find("v001") == 6 && copy.find("v001") == String::npos, "a String is searched");
    bool isCaught = false;
    try {
        static_cast<void>(String("abc").at(7));
    } catch (ORL_OUT_OF_RANGE) {
        isCaught = true;
    }
    check(isCaught, "an exception of the library is caught");
}

void useContainers() {
    List<String> names;
    for (int frame = 1001; frame <= 1010; ++frame) {
        names.append(String(("shot." + std::to_string(frame) + ".exr").c_str()));
    }
    Vector<String> sequences;
    check(FileSequenceUtils::getSequencesInFileList(names, sequences, "") == Status::kSuccess &&
              sequences.size() == 1 && sequences[0] == "shot.%04d.exr",
          "a sequence is found");
    sequences.push_back("another");
    sequences.erase(sequences.begin());
    check(sequences.size() == 1 && sequences[0] == "another",
          "a container that the library filled is changed");
}

void useValues() {
    Rational const rate(24000, 1001);
    Rational back;
    check(back.fromJson(rate.toJson()) == Status::kSuccess && back == rate, "a value goes through its text");
}

class Count : public JobDispatcher::JobBase {
public:
    Count(std::atomic<int>& runs, std::atomic<int>& ends, int prerequisite)
        : JobBase(prerequisite), m_runs(runs), m_ends(ends) {}
    ~Count() override { ++m_ends; }
    void run() override { m_log.push_back(++m_runs); }

private:
    std::atomic<int>& m_runs;
    std::atomic<int>& m_ends;
    std::vector<int> m_log; // memory of the application's own library
};

void useJobs() {
    std::atomic<int> runs{0};
    std::atomic<int> ends{0};
    {
        JobDispatcher dispatcher(2, "consumer");
        dispatcher.start();
        int last = JobDispatcher::JobBase::kNoPrerequisite;
        for (int i = 0; i < 100; ++i) {
            last = dispatcher.addJob(SharedPtr<JobDispatcher::JobBase>(new Count(runs, ends, last)));
        }
        dispatcher.waitJob(last);
    }
    check(runs == 100 && ends == 100, "jobs run and are destroyed");
}

class Heard : public Observer {
public:
    void onNotify(Subject*, NotificationHint const&) override { m_text += "x"; }
    std::string const& text() const { return m_text; }

private:
    std::string m_text;
};

void useObservers() {
    Subject subject;
    Heard heard;
    subject.addObserver(&heard);
    subject.notify(NotificationHint());
    subject.removeObserver(&heard);
    subject.notify(NotificationHint());
    check(heard.text() == "x", "an observer hears");
}

class Shot : public Token {
public:
    Shot() : Token("{SHOT}", "Shot") {}
    Status getValue(String& value) override {
        value = std::string("hb_010").c_str();
        return Status::kSuccess;
    }
};

class ShotTokens : public TokenProducer {
public:
    Status getTokens(List<SharedPtr<Token>>& tokens) override {
        tokens.append(SharedPtr<Token>(new Shot));
        return Status::kSuccess;
    }
};

void useTokens() {
    SharedPtr<TokenResolver> const resolver = TokenResolver::create('{', '}');
    resolver->add(SharedPtr<TokenProducer>(new ShotTokens));
    String path("/shows/{SHOT}/{TAKE}.mov");
    check(resolver->resolve(path, path) == Status::kSuccess && path == "/shows/hb_010/{TAKE}.mov",
          "a token is replaced");
}

class Reader : public MediaMetadataReader {
public:
    Status readMediaMetadata(String const& path, Bounds const&, Time const&, String& metadata) override {
        if (path == "throws") {
            throw std::runtime_error("of the application");
        }
        metadata = (std::string("{\"path\":\"") + path.c_str() + "\"}").c_str();
        return Status::kSuccess;
    }
};

void useReader() {
    SharedPtr<MediaMetadataReader> reader(new Reader);
    Vector<String> paths;
    paths.push_back("a.mov");
    paths.push_back("b.mov");
    Vector<String> metadata;
    check(MediaMetadata::getMultipleMediaMetadata(paths, Bounds(), Time(0, Rational(24, 1)), metadata) ==
                  Status::kSuccess &&
              metadata.size() == 2 && metadata[1] == "{\"path\":\"b.mov\"}",
          "a reader of the application answers on threads of the library");
#ifdef __GLIBCXX__
    paths.push_back("throws");
    bool isCaught = false;
    try {
        MediaMetadata::getMultipleMediaMetadata(paths, Bounds(), Time(0, Rational(24, 1)), metadata);
    } catch (std::exception const& error) {
        isCaught = std::strcmp(error.what(), "of the application") == 0;
    }
    check(isCaught, "an exception of the application goes through the library");
#endif
}

} // namespace

int main() {
    useStrings();
    useContainers();
    useValues();
    useJobs();
    useObservers();
    useTokens();
    useReader();
    if (failures == 0) {
        std::puts("all well");
    }
    return failures == 0 ? 0 : 1;
}
