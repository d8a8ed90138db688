// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlLayoutPicture.h"

#include "orlSvgText.h"
#include "rapidotio/orlOtioNode.h"
#include "rapidotio/orlOtioNodeVisitor.h"
#include "rapidotio/orlOtioVisitorHelper.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <vector>

namespace ORL_0_81::tool {

namespace {

using rapidotio::ClipNode;

// The longer side of the picture, in its own units; a viewer scales it.
constexpr double kLongerSide = 1600.0;

struct Rectangle {
    double centerX;
    double centerY;
    double width;
    double height;
};

struct DrawnClip {
    Rectangle place;
    std::string name;
    std::string details;
};

std::string number(double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.2f", std::isfinite(value) ? value : 0.0);
    return text.data();
}

std::string shortly(double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.6g", value);
    return text.data();
}

std::string fileNameOf(std::string const& path) { return path.substr(path.find_last_of('/') + 1); }

std::string nameOf(ClipNode const& clip) {
    if (!clip.m_name.empty()) {
        return clip.m_name;
    }
    return clip.m_targetUrl.empty() ? "unnamed" : fileNameOf(clip.m_targetUrl);
}

std::string detailsOf(ClipNode const& clip) {
    std::string text;
    if (clip.m_pixelWidth > 0 && clip.m_pixelHeight > 0) {
        text = std::to_string(clip.m_pixelWidth) + " x " + std::to_string(clip.m_pixelHeight);
    }
    rapidotio::Time const& length = clip.m_sourceRange.duration.isDefined() ? clip.m_sourceRange.duration
                                                                            : clip.m_availableRange.duration;
    if (length.isDefined()) {
        text += (text.empty() ? "" : " \xc2\xb7 ") + shortly(length.value) + " f at " + shortly(length.rate);
    }
    return text;
}

class ClipCollector : public rapidotio::NodeVisitor {
public:
    void visitTimelineNode(rapidotio::TimelineNode& node) override { name = node.m_name; }

    void visitClipNode(ClipNode& node) override {
        clips.push_back({{node.m_boundsCenterX, node.m_boundsCenterY, node.m_boundsSizeX, node.m_boundsSizeY},
                         nameOf(node),
                         detailsOf(node)});
    }

    std::string name;
    std::vector<DrawnClip> clips;
};

// Dark enough for white letters, and as far apart from its neighbours as a walk around the hues in steps of
// the golden angle takes it.
std::string colourOf(std::size_t index) {
    constexpr double kGoldenAngle = 137.50776405003785;
    constexpr double kSaturation = 0.5;
    constexpr double kLightness = 0.29;
    double const hue = std::fmod(210.0 + static_cast<double>(index) * kGoldenAngle, 360.0);
    auto component = [hue](double offset) {
        double const k = std::fmod(offset + hue / 30.0, 12.0);
        double const amount = kSaturation * kLightness;
        return static_cast<unsigned>(
            std::lround(255.0 * (kLightness - amount * std::max(-1.0, std::min({k - 3.0, 9.0 - k, 1.0})))));
    };
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "#%02x%02x%02x", component(0.0), component(8.0), component(4.0));
    return text.data();
}

// The picture's own units, from those of the canvas.
class Scale {
public:
    explicit Scale(Bounds const& canvas)
        : m_canvas(canvas),
          m_factor(kLongerSide / std::max({canvas.getSizeX(), canvas.getSizeY(), 1e-300})) {}

    double width() const { return m_canvas.getSizeX() * m_factor; }
    double height() const { return m_canvas.getSizeY() * m_factor; }

    Rectangle operator()(Rectangle const& place) const {
        return {(place.centerX - m_canvas.getCenterX()) * m_factor + width() / 2,
                (place.centerY - m_canvas.getCenterY()) * m_factor + height() / 2, place.width * m_factor,
                place.height * m_factor};
    }

private:
    Bounds const& m_canvas;
    double m_factor;
};

// A long name is parted at the mark that is nearest to its middle, for it would have to be written small.
std::vector<std::string> inTwoLines(std::string const& name) {
    constexpr std::size_t kOneLine = 14;
    if (countLetters(name) <= kOneLine) {
        return {name};
    }
    std::size_t const middle = name.size() / 2;
    auto distance = [middle](std::size_t place) { return place > middle ? place - middle : middle - place; };
    std::size_t best = 0;
    for (std::size_t i = name.find_first_of(" ._-"); i != std::string::npos;
         i = name.find_first_of(" ._-", i + 1)) {
        if (i > 0 && (best == 0 || distance(i) < distance(best))) {
            best = i;
        }
    }
    return best == 0 ? std::vector<std::string>{name}
                     : std::vector<std::string>{name.substr(0, best), name.substr(best)};
}

class Picture {
public:
    explicit Picture(std::string const& title, Scale const& scale) : m_scale(scale) {
        m_text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                 "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " +
                 number(scale.width()) + ' ' + number(scale.height()) + "\" width=\"" +
                 number(scale.width()) + "\" height=\"" + number(scale.height()) +
                 "\" font-family=\"sans-serif\" text-anchor=\"middle\">\n<title>" + svgText(title) +
                 "</title>\n<rect width=\"100%\" height=\"100%\" fill=\"#15161a\"/>\n";
    }

    void drawCell(Rectangle const& cell) {
        m_text += rectangle(m_scale(cell)) + " fill=\"none\" stroke=\"#4a4d57\" stroke-dasharray=\"6 6\" "
                                             "vector-effect=\"non-scaling-stroke\"/>\n";
    }

    void drawClip(DrawnClip const& clip, std::string const& colour) {
        Rectangle const place = m_scale(clip.place);
        m_text += "<g>\n<title>" + svgText(clip.name) +
                  (clip.details.empty() ? "" : "\n" + svgText(clip.details)) + "</title>\n" +
                  rectangle(place) + " fill=\"" + colour +
                  "\" stroke=\"#e8e8ea\" vector-effect=\"non-scaling-stroke\"/>\n";
        writeLines(clip, place);
        m_text += "</g>\n";
    }

    std::string end() { return m_text + "</svg>\n"; }

private:
    // The element, left open for more attributes.
    static std::string rectangle(Rectangle const& place) {
        return "<rect x=\"" + number(place.centerX - place.width / 2) + "\" y=\"" +
               number(place.centerY - place.height / 2) + "\" width=\"" + number(place.width) +
               "\" height=\"" + number(place.height) + '"';
    }

    // So that a line fits into nine tenths of the width, and three lines into the height.
    static double letterSize(Rectangle const& place, std::size_t letters) {
        constexpr double kLetterWidth = 0.62; // of a usual sans serif, of its size
        return std::min(place.height * 0.16,
                        place.width * 0.9 /
                            (kLetterWidth * static_cast<double>(std::max<std::size_t>(letters, 8))));
    }

    // The name in one line or two, and the details below it, centred as one block.
    void writeLines(DrawnClip const& clip, Rectangle const& place) {
        constexpr std::size_t kMaxLetters = 40;
        std::vector<std::string> const name = inTwoLines(shortened(clip.name, kMaxLetters));
        std::size_t letters = 0;
        for (std::string const& line : name) {
            letters = std::max(letters, countLetters(line));
        }
        double const size = letterSize(place, letters);
        double const detailSize =
            clip.details.empty() ? 0.0 : std::min(size * 0.8, letterSize(place, countLetters(clip.details)));

        constexpr double kLineHeight = 1.2;    // of the size of the letters
        constexpr double kLetterHeight = 0.75; // of a capital, likewise
        double const block = static_cast<double>(name.size()) * size * kLineHeight + detailSize;
        double baseline = -block / 2 + size * kLetterHeight;
        for (std::string const& line : name) {
            writeLine(line, place, baseline, size, "#ffffff");
            baseline += size * kLineHeight;
        }
        if (!clip.details.empty()) {
            writeLine(clip.details, place, baseline, detailSize, "#d6d8de");
        }
    }

    void writeLine(std::string const& text, Rectangle const& place, double below, double size,
                   char const* colour) {
        m_text += "<text x=\"" + number(place.centerX) + "\" y=\"" + number(place.centerY + below) +
                  "\" font-size=\"" + number(size) + "\" fill=\"" + colour + "\">" + svgText(text) +
                  "</text>\n";
    }

    Scale const& m_scale;
    std::string m_text;
};

// The cells behind the clips: a clip stands in the middle of its own, and fills it in one direction.
std::vector<Rectangle> cellsOf(std::vector<DrawnClip> const& clips, Bounds const& canvas) {
    std::vector<Rectangle> cells;
    for (auto first = clips.begin(); first != clips.end();) {
        auto const end = std::find_if(first, clips.end(), [first](DrawnClip const& clip) {
            return clip.place.centerY != first->place.centerY;
        });
        double const width = canvas.getSizeX() / static_cast<double>(end - first);
        for (; first != end; ++first) {
            cells.push_back({first->place.centerX, first->place.centerY, width, 0.0});
        }
    }
    double rows = 0.0;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        rows += i == 0 || cells[i].centerY != cells[i - 1].centerY ? 1.0 : 0.0;
    }
    for (Rectangle& cell : cells) {
        cell.height = canvas.getSizeY() / rows;
    }
    return cells;
}

} // namespace

std::string drawLayout(std::string const& layout, Bounds const& canvas) {
    ClipCollector collector;
    rapidotio::VisitorHelper::visit(layout, collector, nullptr);
    Scale const scale(canvas);
    Picture picture(collector.name, scale);
    for (Rectangle const& cell : cellsOf(collector.clips, canvas)) {
        picture.drawCell(cell);
    }
    for (std::size_t i = 0; i < collector.clips.size(); ++i) {
        picture.drawClip(collector.clips[i], colourOf(i));
    }
    return picture.end();
}

} // namespace ORL_0_81::tool
