// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlTimecode.h"

namespace ORL_0_81::media {

namespace {

// One to three digits, so that no text is too large for the number.
bool readNumber(std::string const& text, std::size_t& position, int& number) {
    std::size_t const start = position;
    number = 0;
    while (position < text.size() && text[position] >= '0' && text[position] <= '9') {
        number = number * 10 + (text[position] - '0');
        if (++position - start > 3) {
            return false;
        }
    }
    return position > start;
}

bool readSeparator(std::string const& text, std::size_t& position, char const* any, char& found) {
    if (position >= text.size()) {
        return false;
    }
    found = text[position++];
    for (; *any; ++any) {
        if (found == *any) {
            return true;
        }
    }
    return false;
}

} // namespace

bool frameOfTimecode(std::string const& text, int framesPerSecond, std::int64_t& frame) {
    int hours = 0;
    int minutes = 0;
    int seconds = 0;
    int frames = 0;
    char separator = ':';
    std::size_t position = 0;
    bool const complete =
        readNumber(text, position, hours) && readSeparator(text, position, ":", separator) &&
        readNumber(text, position, minutes) && readSeparator(text, position, ":", separator) &&
        readNumber(text, position, seconds) && readSeparator(text, position, ":;.", separator) &&
        readNumber(text, position, frames) && position == text.size();
    if (!complete || minutes > 59 || seconds > 59 || frames >= framesPerSecond) {
        return false;
    }
    bool const drops = separator != ':';
    if (drops && framesPerSecond % 30 != 0) {
        return false;
    }
    std::int64_t const totalMinutes = std::int64_t{60} * hours + minutes;
    std::int64_t number = (totalMinutes * 60 + seconds) * framesPerSecond + frames;
    if (drops) {
        number -= (totalMinutes - totalMinutes / 10) * (framesPerSecond / 30 * 2);
    }
    frame = number;
    return true;
}

} // namespace ORL_0_81::media
