#pragma once

#include <string>

#include "ProjectRecord.h"

namespace vlm {

/// Builds the line of an authorised treatment project from its rows in the services view, which follow one another:
/// one for each state of the services provided. Reads the row on which the row set stands and never moves it.
class ProjectLine {
public:
    /// Binds the columns of `rows`; Error for a missing one.
    explicit ProjectLine(const data::Recordset& rows) : rows_(rows), everyRow_(rows), firstRow_(rows) {}

    /// Makes `line` anew from the first row of a project, or completes it with a further one. A value that cannot be
    /// written (a date that is none, an amount beyond its limits) throws.
    void BuildLine(std::string& line, bool startsProject) const;

private:
    const data::Recordset& rows_;
    BoundColumns<projects::kColumnsOfEveryRow> everyRow_;
    BoundColumns<projects::kColumnsOfFirstRow> firstRow_;
};

}  // namespace vlm
