// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlGuardedRegex.h"

#include "internal/orlRoomyStack.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <locale>

namespace ORL_0_81 {

namespace {

// A pattern of up to this many states, characters and open parentheses can be compiled and matched within
// RoomyStack::CALLERS_ROOM and what the watch on the matching allows beside: the engine takes about 100 bytes
// of stack for each character to compile, 450 for each parenthesis, and 150 for each state that it passes
// through without taking a step.
constexpr std::size_t TAME_STATES = 512;
constexpr std::size_t TAME_NESTING = 64;

// Beyond this the compilation itself could go too deep for a roomy stack. libstdc++ has a limit of as many
// states.
constexpr std::size_t MAX_PATTERN = 100000;

// How many steps a text may take. One takes ten to a hundred nanoseconds.
constexpr std::size_t MAX_STEPS = 20000000;

// A pattern that has taken so many steps in vain has no more than the quick number of them from then on, for
// there may be a million names yet.
constexpr std::size_t PATIENCE = 200000000;

std::size_t quickSteps(std::string_view text) { return std::min(1000 + text.size() * 100, MAX_STEPS); }

std::size_t patientSteps(std::string_view text) { return std::min(100000 + text.size() * 1000, MAX_STEPS); }

#ifdef __GLIBCXX__
constexpr bool HAS_SIDE_BY_SIDE = true;
constexpr std::regex::flag_type SIDE_BY_SIDE = std::regex::ECMAScript | std::regex_constants::__polynomial;
#else
constexpr bool HAS_SIDE_BY_SIDE = false;
constexpr std::regex::flag_type SIDE_BY_SIDE = std::regex::ECMAScript;
#endif

// How large and how deep a pattern is, from above, without compiling it.
class PatternSize {
public:
    explicit PatternSize(std::string_view pattern) {
        for (std::size_t i = 0; i < pattern.size(); ++i) {
            switch (pattern[i]) {
            case '\\':
                ++i;
                atom(1);
                break;
            case '[':
                i = endOfBrackets(pattern, i);
                atom(1);
                break;
            case '*':
            case '+':
            case '?':
                repeat(1);
                break;
            case '(':
                m_open.push_back(0);
                deepest = std::max(deepest, m_open.size());
                break;
            case ')':
                if (m_open.size() > 1) {
                    std::size_t const group = m_open.back();
                    m_open.pop_back();
                    atom(group + 2);
                }
                break;
            case '{':
                repeat(largestNumber(pattern, i));
                break;
            default:
                atom(1);
            }
        }
        for (std::size_t const size : m_open) {
            states += size;
        }
    }

    std::size_t states = 0;
    std::size_t deepest = 1;

private:
    void atom(std::size_t size) {
        m_last = std::min(size, MAX_PATTERN);
        m_open.back() = std::min(m_open.back() + m_last, MAX_PATTERN);
    }

    void repeat(std::size_t times) {
        m_last = std::min(m_last * std::max<std::size_t>(times, 1) + 2, MAX_PATTERN);
        m_open.back() = std::min(m_open.back() + m_last, MAX_PATTERN);
    }

    std::size_t endOfBrackets(std::string_view pattern, std::size_t position) {
        for (++position; position < pattern.size() && pattern[position] != ']'; ++position) {
            if (pattern[position] == '\\') {
                ++position;
            } else if (pattern[position] == '[') {
                // A class, whose own end is not worth telling from that of the brackets.
                states = MAX_PATTERN;
            }
        }
        return position;
    }

    static std::size_t largestNumber(std::string_view pattern, std::size_t position) {
        std::size_t largest = 0;
        std::size_t number = 0;
        for (++position; position < pattern.size(); ++position) {
            char const c = pattern[position];
            number = FrameNotation::isDigit(c)
                         ? std::min(number * 10 + static_cast<std::size_t>(c - '0'), MAX_PATTERN)
                         : 0;
            largest = std::max(largest, number);
            if (c != ',' && !FrameNotation::isDigit(c)) {
                break;
            }
        }
        return largest;
    }

    std::vector<std::size_t> m_open{0}; // the sizes of the groups that are open
    std::size_t m_last = 0;             // the size of what a repeat would repeat
};

[[noreturn]] void giveUp(std::regex_constants::error_type reason) {
    RoomyStack::beforeThrow();
    throw std::regex_error(reason);
}

// Counts the steps of one match, and looks how deep it is.
class Watch {
public:
    explicit Watch(std::size_t steps)
        : m_stepsLeft(steps), m_room(RoomyStack::room()), m_start(RoomyStack::position()) {}

    void step() {
        if (m_stepsLeft-- == 0) {
            m_stepsLeft = 0;
            giveUp(std::regex_constants::error_complexity);
        }
        char const* const here = RoomyStack::position();
        if (m_start > here && static_cast<std::size_t>(m_start - here) > m_room) {
            giveUp(std::regex_constants::error_stack);
        }
    }

private:
    std::size_t m_stepsLeft;
    std::size_t const m_room;
    char const* const m_start;
};

// A place in the text that tells the watch what is done with it.
class Place {
public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = char const*;
    using reference = char const&;

    Place() = default;
    Place(char const* place, Watch* watch) : m_place(place), m_watch(watch) {}

    reference operator*() const {
        m_watch->step();
        return *m_place;
    }
    pointer operator->() const { return m_place; }
    Place& operator++() {
        m_watch->step();
        ++m_place;
        return *this;
    }
    Place operator++(int) {
        Place const old = *this;
        ++*this;
        return old;
    }
    Place& operator--() {
        --m_place;
        return *this;
    }
    Place operator--(int) {
        Place const old = *this;
        --*this;
        return old;
    }
    // Of these two, each standard library uses another.
    [[maybe_unused]] friend bool operator==(Place const& left, Place const& right) {
        return left.m_place == right.m_place;
    }
    [[maybe_unused]] friend bool operator!=(Place const& left, Place const& right) {
        return left.m_place != right.m_place;
    }

    char const* get() const { return m_place; }

private:
    char const* m_place = nullptr;
    Watch* m_watch = nullptr;
};

// Some libraries' facets remember what they were asked for, and do so without a lock. Asked for everything once, they
// only read from then on.
bool fillCharacterTables() {
    auto const& facet = std::use_facet<std::ctype<char>>(std::locale::classic());
    for (int c = 1; c <= std::numeric_limits<unsigned char>::max(); ++c) {
        static_cast<void>(facet.narrow(static_cast<char>(c), '\0'));
        static_cast<void>(facet.widen(static_cast<char>(c)));
    }
    return true;
}

// The same on all threads and in any program, whatever its global locale.
std::unique_ptr<std::regex> make(std::string const& pattern, std::regex::flag_type flags) {
    [[maybe_unused]] static bool const isFilled = fillCharacterTables();
    auto result = std::make_unique<std::regex>();
    result->imbue(std::locale::classic());
    result->assign(pattern.data(), pattern.size(), flags);
    return result;
}

void runRoomy(std::function<void()> const& task) {
    if (!RoomyStack::run(task)) {
        giveUp(std::regex_constants::error_stack);
    }
}

bool searchOnce(std::regex const& regex, std::string_view text, std::size_t steps) {
    Watch watch(steps);
    return std::regex_search(Place(text.data(), &watch), Place(text.data() + text.size(), &watch), regex);
}

bool matchOnce(std::regex const& regex, std::string_view text, std::size_t steps,
               std::vector<FrameNotation::Span>& captures) {
    Watch watch(steps);
    std::match_results<Place> results;
    if (!std::regex_match(Place(text.data(), &watch), Place(text.data() + text.size(), &watch), results,
                          regex)) {
        return false;
    }
    captures.clear();
    for (std::size_t i = 1; i < results.size(); ++i) {
        auto const& capture = results[i];
        if (capture.matched) {
            captures.push_back({static_cast<std::size_t>(capture.first.get() - text.data()),
                                static_cast<std::size_t>(capture.second.get() - capture.first.get())});
        } else {
            captures.push_back({text.size(), 0});
        }
    }
    return true;
}

// Whether the digits at a position make a number that an int cannot hold; the position moves behind them.
bool isBeyondInt(std::string_view pattern, std::size_t& position) {
    long long number = 0;
    for (; position < pattern.size() && FrameNotation::isDigit(pattern[position]); ++position) {
        number = std::min(number * 10 + (pattern[position] - '0'), (1LL << 31));
    }
    return number > std::numeric_limits<int>::max();
}

// Whether a repeat or a back reference has a number that an int cannot hold. Engines cut it to one that they can
// hold, or overflow.
bool holdsUncountable(std::string_view pattern) {
    bool isInBrackets = false;
    for (std::size_t i = 0; i < pattern.size();) {
        char const c = pattern[i++];
        if (c == '\\') {
            if (isBeyondInt(pattern, i)) {
                return true;
            }
            // What is escaped means itself; of digits there are none left.
            if (i < pattern.size() && pattern[i - 1] == '\\') {
                ++i;
            }
        } else if (isInBrackets) {
            isInBrackets = c != ']';
        } else if (c == '[') {
            isInBrackets = true;
        } else if (c == '{') {
            while (i < pattern.size() && (pattern[i] == ',' || FrameNotation::isDigit(pattern[i]))) {
                if (isBeyondInt(pattern, i)) {
                    return true;
                }
                if (i < pattern.size() && pattern[i] == ',') {
                    ++i;
                }
            }
        }
    }
    return false;
}

} // namespace

bool GuardedRegex::isWild(std::string_view pattern) {
    if (pattern.size() > TAME_STATES) {
        return true;
    }
    PatternSize const size(pattern);
    return size.states > TAME_STATES || size.deepest > TAME_NESTING;
}

GuardedRegex::GuardedRegex(std::string_view pattern)
    : m_pattern(pattern), m_needsRoom(isWild(pattern)), m_canGoSideBySide(HAS_SIDE_BY_SIDE) {
    if (m_pattern.size() > MAX_PATTERN) {
        giveUp(std::regex_constants::error_space);
    }
    if (holdsUncountable(m_pattern)) {
        giveUp(std::regex_constants::error_badbrace);
    }
    if (m_needsRoom) {
        runRoomy([this] { compile(); });
    } else {
        compile();
    }
}

GuardedRegex::~GuardedRegex() {
    // Some libraries free a pattern state after state, each from within the one before.
    if (m_needsRoom && !RoomyStack::isHere()) {
        RoomyStack::run([this] {
            m_regex.reset();
            m_sideBySide.reset();
        });
    }
}

void GuardedRegex::compile() { m_regex = make(m_pattern, std::regex::ECMAScript); }

std::size_t GuardedRegex::captureCount() const { return m_regex->mark_count(); }

bool GuardedRegex::search(std::string_view text) {
    bool result = false;
    if (m_needsRoom && !RoomyStack::isHere()) {
        runRoomy([&] { result = search(text); });
        return result;
    }
    try {
        return searchBothWays(text);
    } catch (std::regex_error const& failure) {
        if (failure.code() != std::regex_constants::error_stack || RoomyStack::isHere()) {
            throw;
        }
    }
    runRoomy([&] { result = searchBothWays(text); });
    return result;
}

// The usual way is the faster one, so it comes first, but not for long.
bool GuardedRegex::searchBothWays(std::string_view text) {
    if (m_canGoSideBySide) {
        try {
            return searchOnce(*m_regex, text, quickSteps(text));
        } catch (std::regex_error const&) {
        }
        try {
            return searchSideBySide(text);
        } catch (std::regex_error const& failure) {
            if (m_canGoSideBySide) {
                loseSteps(failure, MAX_STEPS);
                throw;
            }
        }
    }
    std::size_t const steps = stepsFor(text);
    try {
        return searchOnce(*m_regex, text, steps);
    } catch (std::regex_error const& failure) {
        loseSteps(failure, steps);
        throw;
    }
}

std::size_t GuardedRegex::stepsFor(std::string_view text) const {
    return m_lostSteps > PATIENCE ? quickSteps(text) : patientSteps(text);
}

void GuardedRegex::loseSteps(std::regex_error const& failure, std::size_t steps) {
    if (failure.code() == std::regex_constants::error_complexity) {
        m_lostSteps += steps;
    }
}

// All places at which the pattern could begin are tried at a time by letting anything stand before and
// behind.
bool GuardedRegex::searchSideBySide(std::string_view text) {
    if (!m_sideBySide) {
        m_canGoSideBySide = false; // unless the next line comes back
        m_sideBySide = make("[\\s\\S]*(?:" + m_pattern + ")[\\s\\S]*", SIDE_BY_SIDE);
        m_canGoSideBySide = true;
    }
    Watch watch(m_lostSteps > PATIENCE ? quickSteps(text) : MAX_STEPS);
    return std::regex_match(Place(text.data(), &watch), Place(text.data() + text.size(), &watch),
                            *m_sideBySide);
}

bool GuardedRegex::match(std::string_view text, std::vector<Span>& captures) {
    bool result = false;
    if (!m_needsRoom || RoomyStack::isHere()) {
        std::size_t const steps = stepsFor(text);
        try {
            return matchOnce(*m_regex, text, steps, captures);
        } catch (std::regex_error const& failure) {
            if (failure.code() != std::regex_constants::error_stack || RoomyStack::isHere()) {
                loseSteps(failure, steps);
                throw;
            }
        }
    }
    runRoomy([&] { result = match(text, captures); });
    return result;
}

} // namespace ORL_0_81
