// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TEXT_TABLE_H
#define ORL_TEXT_TABLE_H

#include "orlTerminalStyle.h"

#include <cstddef>
#include <string>
#include <vector>

namespace ORL_0_81::tool {

/// Rows of cells in aligned columns, for people. Nothing is cut; a column is as wide as its widest cell.
///
/// Cells are UTF-8, and each code point counts as one column of the screen.
class TextTable {
public:
    enum class Alignment { kLeft, kRight };

    struct Column {
        std::string title;
        Alignment alignment;
    };

    explicit TextTable(std::vector<Column> columns);

    /// \param cells One for each column; an empty one is shown as "-".
    void addRow(std::vector<std::string> cells);

    /// The lines, each with `indent` in front and without blanks at its end.
    std::string text(std::string const& indent, TerminalStyle const& style = TerminalStyle()) const;

private:
    std::vector<Column> m_columns;
    std::vector<std::vector<std::string>> m_rows; ///< the titles first
    std::vector<std::size_t> m_widths;
};

} // namespace ORL_0_81::tool

#endif // ORL_TEXT_TABLE_H
