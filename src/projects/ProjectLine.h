#pragma once

#include <array>
#include <optional>
#include <string>

#include "ProjectLayout.h"
#include "database/Recordset.h"
#include "values/Currency.h"

namespace vlm {

/// Builds the line of an authorised treatment project from its rows in the services view, which follow one another:
/// one for each state of the services provided. Reads the row on which the row set stands and never moves it.
class ProjectLine {
public:
    /// Binds the columns of `rows`; Error for a missing one.
    explicit ProjectLine(const data::Recordset& rows);

    /// Makes `line` anew from the first row of a project, or completes it with a further one. A value that cannot be
    /// written (a date that is none, an amount beyond its limits) throws.
    void BuildLine(std::string& line, bool startsProject) const;

private:
    void WriteProject(std::string& line) const;
    void WriteAmounts(std::string& line) const;
    void AppendField(std::string& out, std::size_t index, std::string_view written) const;
    void AppendColumn(std::string& out, const projects::Row& row, int column) const;
    bool IsInState(int state) const { return rows_.NumberOf(state_) == state; }
    Currency ImportoTotale() const;
    Currency ImportoPerAccesso() const;

    const data::Recordset& rows_;
    std::array<int, projects::kLayout.size()> columns_{};
    int state_, numeroAccessi_, importoTotale_, dataRevoca_;
};

/// The date of a cell that may also hold a date as text; nothing for Null and for blank text.
std::optional<Date> DateOfCell(const data::Recordset& rows, int column);

}  // namespace vlm
