// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlNameGenerator.h"

#include <algorithm>
#include <initializer_list>
#include <random>
#include <string_view>

namespace {

using Names = std::vector<std::string>;

std::string padded(std::size_t number, std::size_t width) {
    std::string const digits = std::to_string(number);
    return std::string(width > digits.size() ? width - digits.size() : 0, '0') + digits;
}

// The text of the pattern between "#" characters, with a number in place of each row of them, as wide as the
// row.
void add(Names& names, std::string_view pattern, std::initializer_list<std::size_t> numbers) {
    std::string name;
    auto number = numbers.begin();
    while (!pattern.empty()) {
        std::size_t const width = std::min(pattern.find_first_not_of('#'), pattern.size());
        if (width > 0) {
            name += padded(*number++, width);
            pattern.remove_prefix(width);
        } else {
            name += pattern.front();
            pattern.remove_prefix(1);
        }
    }
    names.push_back(name);
}

// Of five letters, another for each number.
std::string word(std::size_t number) {
    std::string result(5, 'a');
    for (char& letter : result) {
        letter = static_cast<char>('a' + number % 26);
        number /= 26;
    }
    return result;
}

std::size_t draw(std::mt19937& random, std::size_t bound) { return random() % bound; }

void addMixed(Names& names, std::mt19937& random) {
    std::size_t const shot = draw(random, 400) * 10;
    std::size_t const number = draw(random, 100000);
    switch (draw(random, 20)) {
    case 0:
        add(names, "2019-03-## at ##.##.##.png",
            {1 + number % 28, number % 24, number % 60, number / 7 % 60});
        break;
    case 1:
        add(names, "sh####_comp_v###.mov", {shot, draw(random, 30)});
        break;
    case 2:
        add(names, "IMG_########.jpg", {random() % 100000000});
        break;
    case 3:
        add(names, "notes_#.txt", {number});
        break;
    case 4:
        add(names, "cache.##########.###.bin", {random(), number % 1000});
        break;
    default:
        // A part of a sequence, in order.
        for (std::size_t frame = 1001, version = draw(random, 30); frame < 1101; ++frame) {
            add(names, "sh####_comp_v###.####.exr", {shot, version, frame});
        }
    }
}

} // namespace

char const* nameOf(NameShape shape) {
    switch (shape) {
    case NameShape::kOneFamily:
        return "OneFamily";
    case NameShape::kShuffledFamilies:
        return "ShuffledFamilies";
    case NameShape::kShuffledGrid:
        return "ShuffledGrid";
    case NameShape::kPartnerless:
        return "Partnerless";
    case NameShape::kVersionsOfShots:
        return "VersionsOfShots";
    case NameShape::kShotsByTens:
        return "ShotsByTens";
    case NameShape::kMixture:
        return "Mixture";
    }
    return "";
}

// The generators of the standard library are told to the bit, its distributions and shuffles are not; the
// shuffle here is good enough.
Names generateNames(NameShape shape, std::size_t count) {
    std::mt19937 random(4711); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same names each time
    Names names;
    names.reserve(count + 100);
    for (std::size_t i = 0; names.size() < count; ++i) {
        switch (shape) {
        case NameShape::kOneFamily:
            add(names, "shot_010_comp.#######.exr", {i});
            break;
        case NameShape::kShuffledFamilies:
            add(names, "element_" + word(i / 100) + ".####.exr", {1001 + i % 100});
            break;
        case NameShape::kShuffledGrid:
            add(names, "element######.####.exr", {i / 100, 1001 + i % 100});
            break;
        case NameShape::kPartnerless:
            add(names, "p###_s######_v###.#######.exr",
                {random() % 1000, random() % 1000000, random() % 1000, random() % 10000000});
            break;
        case NameShape::kVersionsOfShots:
            add(names, "sh#####_comp_v###.####.exr", {i / 150 * 10, i / 50 % 3 + 1, 1001 + i % 50});
            break;
        case NameShape::kShotsByTens:
            add(names, "sh#######_v###", {(i / 2 + 1) * 10, i % 2 + 1});
            break;
        case NameShape::kMixture:
            addMixed(names, random);
            break;
        }
    }
    names.resize(count);
    if (shape == NameShape::kShuffledFamilies || shape == NameShape::kShuffledGrid) {
        for (std::size_t i = names.size(); i > 1; --i) {
            std::swap(names[i - 1], names[draw(random, i)]);
        }
    }
    return names;
}
