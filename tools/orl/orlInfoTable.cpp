// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlInfoCommand.h"
#include "orlLossReport.h"
#include "orlPrintable.h"
#include "orlTextTable.h"
#include "orlTimelineSummary.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace ORL_0_81::tool {

namespace {

using Alignment = TextTable::Alignment;

// Three places, which tell the frames of every usual rate apart. A number too large for that is no time of
// a cut; it is told short.
std::string fixed(double number) {
    constexpr double kLargest = 1e15;
    std::array<char, 32> text{};
    if (std::fabs(number) < kLargest) {
        std::snprintf(text.data(), text.size(), "%.3f", number);
    } else {
        std::snprintf(text.data(), text.size(), "%g", number);
    }
    return text.data();
}

// As few places as it takes, three at most: frames are whole numbers but for converted ones.
std::string trimmed(double number) {
    std::string text = fixed(number);
    if (text.find('.') != std::string::npos && text.find('e') == std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        text.erase(text.find_last_not_of('.') + 1);
    }
    return text == "-0" ? "0" : text;
}

std::string seconds(std::optional<Moment> const& moment) { return moment ? fixed(moment->seconds) : ""; }

std::string frames(std::optional<Moment> const& moment) { return moment ? trimmed(moment->frames) : ""; }

std::string mediaOf(ClipSummary const& clip) {
    for (std::string const* place : {&clip.url, &clip.framesPath, &clip.moviePath, &clip.uploadedMovie}) {
        if (!place->empty()) {
            return printable(*place);
        }
    }
    return {};
}

std::string kindOf(TrackSummary const& track) {
    switch (track.kind) {
    case rapidotio::kTrackVideo:
        return "video";
    case rapidotio::kTrackAudio:
        return "audio";
    default:
        return {};
    }
}

std::string count(std::size_t number, std::string const& word) {
    return std::to_string(number) + ' ' + word + (number == 1 ? "" : "s");
}

std::string overview(TimelineSummary const& summary) {
    Counts const total = summary.total();
    std::string start = "-";
    if (summary.start) {
        start = fixed(summary.start->seconds) + " s, frame " + trimmed(summary.start->frames) + " at " +
                trimmed(*summary.startRate) + " a second";
    }
    return "  name   " + (summary.name.empty() ? "-" : printable(summary.name)) + "\n  start  " + start +
           "\n  holds  " + count(summary.tracks.size(), "track") + ", " + count(total.clips, "clip") + ", " +
           count(total.gaps, "gap") + ", " + count(total.effects, "effect") + '\n';
}

void addTrack(TextTable& table, std::string const& number, std::string const& name,
              TrackSummary const& track) {
    table.addRow({number, name, kindOf(track), std::to_string(track.counts.clips),
                  std::to_string(track.counts.gaps), std::to_string(track.counts.effects)});
}

bool hasOutside(TimelineSummary const& summary) {
    Counts const& counts = summary.outside.counts;
    return counts.clips + counts.gaps + counts.effects > 0;
}

std::string trackTable(TimelineSummary const& summary, TerminalStyle const& style) {
    TextTable table({{"TRACK", Alignment::kRight},
                     {"NAME", Alignment::kLeft},
                     {"KIND", Alignment::kLeft},
                     {"CLIPS", Alignment::kRight},
                     {"GAPS", Alignment::kRight},
                     {"EFFECTS", Alignment::kRight}});
    for (std::size_t i = 0; i < summary.tracks.size(); ++i) {
        TrackSummary const& track = summary.tracks[i];
        // A track within another is set in by as much as it is deep.
        std::string const name = track.name.empty() ? "-" : printable(track.name);
        addTrack(table, std::to_string(i + 1), std::string(2 * track.depth, ' ') + name, track);
    }
    if (hasOutside(summary)) {
        addTrack(table, "-", "(in no track)", summary.outside);
    }
    return table.text("  ", style);
}

void addClips(TextTable& table, std::string const& number, TrackSummary const& track) {
    for (ClipSummary const& clip : track.clips) {
        std::string const resolution = clip.resolution ? std::to_string(clip.resolution->width) + 'x' +
                                                             std::to_string(clip.resolution->height)
                                                       : "";
        table.addRow({number, printable(clip.name), seconds(clip.start), seconds(clip.length),
                      frames(clip.start), frames(clip.length), clip.rate ? trimmed(*clip.rate) : "",
                      resolution, mediaOf(clip)});
    }
}

std::string clipTable(TimelineSummary const& summary, TerminalStyle const& style) {
    TextTable table({{"TRACK", Alignment::kRight},
                     {"CLIP", Alignment::kLeft},
                     {"START s", Alignment::kRight},
                     {"LENGTH s", Alignment::kRight},
                     {"START f", Alignment::kRight},
                     {"LENGTH f", Alignment::kRight},
                     {"RATE", Alignment::kRight},
                     {"SIZE", Alignment::kRight},
                     {"MEDIA", Alignment::kLeft}});
    for (std::size_t i = 0; i < summary.tracks.size(); ++i) {
        addClips(table, std::to_string(i + 1), summary.tracks[i]);
    }
    addClips(table, "-", summary.outside);
    return table.text("  ", style);
}

std::string notRead(LossReport const& losses, TerminalStyle const& style) {
    std::string text;
    for (LossGroup const& group : losses.groups()) {
        if (group.kind == LossKind::kSchemaNotHandled) {
            text += "  " + style.warning("not read:") + ' ' + LossReport::line(group) + '\n';
        }
    }
    return text;
}

} // namespace

std::string toTable(std::string const& file, TimelineSummary const& summary, LossReport const& losses,
                    TerminalStyle const& style) {
    std::string text = style.title(printable(file)) + '\n' + overview(summary);
    if (!summary.tracks.empty() || hasOutside(summary)) {
        text += '\n' + trackTable(summary, style);
    }
    if (summary.total().clips > 0) {
        text += '\n' + clipTable(summary, style);
    }
    std::string const rest = notRead(losses, style);
    return rest.empty() ? text : text + '\n' + rest;
}

} // namespace ORL_0_81::tool
