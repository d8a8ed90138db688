// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_CONTAINER_TESTING_H
#define ORL_CONTAINER_TESTING_H

#include <orlAnnotation.h>
#include <orlCacheStats.h>
#include <orlList.h>
#include <orlRefCounted.h>
#include <orlSharedPtr.h>
#include <orlStructs.h>
#include <orlToken.h>
#include <orlVector.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ORL_0_81 {

/// As a sibling library has it: the library under test only knows that it is counted.
class ORL_CORE_EXPORT ExternalSegment : public RefCountedMT {
public:
    explicit ExternalSegment(int number) : m_number(number) {}
    ExternalSegment(ExternalSegment const&) = delete;
    ExternalSegment& operator=(ExternalSegment const&) = delete;

    int m_number;
};

} // namespace ORL_0_81

namespace ContainerTesting {

using namespace ORL_0_81;

/// A token that counts how many of its kind there are.
class NumberedToken : public Token {
public:
    explicit NumberedToken(int number) : Token(std::to_string(number).c_str(), "shown") { ++alive; }
    NumberedToken(NumberedToken const&) = delete;
    NumberedToken& operator=(NumberedToken const&) = delete;
    ~NumberedToken() override { --alive; }

    Status getValue(String& value) override {
        value = getName();
        return Status::kSuccess;
    }

    static inline int alive = 0;
};

/// Each number makes a value of its own, and a value tells its number. Numbers are those below a million, and
/// not negative; a value that was made otherwise, or half copied, gives -1.
/// @{

inline String textOf(int number) {
    return String(("an element with a text that takes an allocation, " + std::to_string(number)).c_str());
}

inline int numberOf(String const& value) {
    std::string const text(value.c_str());
    std::size_t const comma = text.rfind(", ");
    return comma == std::string::npos ? -1 : std::stoi(text.substr(comma + 2));
}

inline void make(int& value, int number) { value = number; }
inline int numberOf(int value) { return value; }

inline void make(double& value, int number) { value = number + 0.5; }
inline int numberOf(double value) { return static_cast<int>(value - 0.5); }

inline void make(long long& value, int number) { value = number * 10000000000LL; }
inline int numberOf(long long value) { return static_cast<int>(value / 10000000000LL); }

inline void make(String& value, int number) { value = textOf(number); }

inline void make(NameValueStruct& value, int number) { value = {textOf(number), textOf(number + 1)}; }
inline int numberOf(NameValueStruct const& value) {
    return numberOf(value.value) == numberOf(value.name) + 1 ? numberOf(value.name) : -1;
}

inline void make(NameDescriptionStruct& value, int number) { value = {textOf(number), textOf(number + 1)}; }
inline int numberOf(NameDescriptionStruct const& value) {
    return numberOf(value.description) == numberOf(value.name) + 1 ? numberOf(value.name) : -1;
}

inline void make(SharedPtr<Token>& value, int number) { value.reset(new NumberedToken(number)); }
inline int numberOf(SharedPtr<Token> const& value) { return value ? std::stoi(value->getName()) : -1; }

inline void make(SharedPtr<ExternalSegment>& value, int number) { value.reset(new ExternalSegment(number)); }
inline int numberOf(SharedPtr<ExternalSegment> const& value) { return value ? value->m_number : -1; }

inline void make(SharedPtr<Annotation::Layer>& value, int number) {
    value.reset(new Annotation::Paint);
    value->setGhostAfter(static_cast<unsigned int>(number));
}
inline int numberOf(SharedPtr<Annotation::Layer> const& value) {
    return value ? static_cast<int>(value->getGhostAfter()) : -1;
}

inline void make(Annotation::Paint::Point& value, int number) {
    value = {number + 0.25, number + 0.5, number + 0.75};
}
inline int numberOf(Annotation::Paint::Point const& value) {
    bool const whole = value.y == value.x + 0.25 && value.width == value.x + 0.5;
    return whole ? static_cast<int>(value.x) : -1;
}

inline void make(CacheStats::FrameRange& value, int number) { value = {number, -1LL - number}; }
inline int numberOf(CacheStats::FrameRange const& value) {
    return value.end == -1 - value.start ? static_cast<int>(value.start) : -1;
}

template <class T>
T made(int number) {
    T value = T();
    make(value, number);
    return value;
}

/// @}

template <class Container>
std::vector<int> numbersOf(Container const& container) {
    std::vector<int> numbers;
    for (auto const& value : container) {
        numbers.push_back(numberOf(value));
    }
    return numbers;
}

using Numbers = std::vector<int>;

/// All element types that the library instantiates.
using ListElements =
    testing::Types<int, double, String, NameDescriptionStruct, SharedPtr<Token>, SharedPtr<ExternalSegment>>;
using VectorElements =
    testing::Types<double, long long, String, NameValueStruct, SharedPtr<Annotation::Layer>,
                   Annotation::Paint::Point, CacheStats::FrameRange>;

struct ElementNames {
    template <class T>
    static std::string GetName(int) {
        return name(static_cast<T*>(nullptr));
    }

    static std::string name(int*) { return "Int"; }
    static std::string name(double*) { return "Double"; }
    static std::string name(long long*) { return "LongLong"; }
    static std::string name(String*) { return "String"; }
    static std::string name(NameValueStruct*) { return "NameValueStruct"; }
    static std::string name(NameDescriptionStruct*) { return "NameDescriptionStruct"; }
    static std::string name(SharedPtr<Token>*) { return "SharedToken"; }
    static std::string name(SharedPtr<ExternalSegment>*) { return "SharedExternalSegment"; }
    static std::string name(SharedPtr<Annotation::Layer>*) { return "SharedLayer"; }
    static std::string name(Annotation::Paint::Point*) { return "Point"; }
    static std::string name(CacheStats::FrameRange*) { return "FrameRange"; }
};

} // namespace ContainerTesting

#endif // ORL_CONTAINER_TESTING_H
