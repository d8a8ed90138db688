// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlTextTable.h"

#include <algorithm>

namespace ORL_0_81::tool {

namespace {

std::size_t countCodePoints(std::string const& text) {
    auto const isFirstByte = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; };
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), isFirstByte));
}

} // namespace

TextTable::TextTable(std::vector<Column> columns)
    : m_columns(std::move(columns)), m_widths(m_columns.size()) {
    std::vector<std::string> titles;
    titles.reserve(m_columns.size());
    for (Column const& column : m_columns) {
        titles.push_back(column.title);
    }
    addRow(std::move(titles));
}

void TextTable::addRow(std::vector<std::string> cells) {
    cells.resize(m_columns.size());
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (cells[i].empty()) {
            cells[i] = "-";
        }
        m_widths[i] = std::max(m_widths[i], countCodePoints(cells[i]));
    }
    m_rows.push_back(std::move(cells));
}

std::string TextTable::text(std::string const& indent, TerminalStyle const& style) const {
    std::string text;
    for (std::vector<std::string> const& row : m_rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            std::string const padding(m_widths[i] - countCodePoints(row[i]), ' ');
            line += i == 0 ? "" : "  ";
            line += m_columns[i].alignment == Alignment::kLeft ? row[i] + padding : padding + row[i];
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += indent + (&row == &m_rows.front() ? style.title(line) : line) + '\n';
    }
    return text;
}

} // namespace ORL_0_81::tool
