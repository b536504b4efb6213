#include "databases/DatabaseWriter.h"

#include <algorithm>

#include "values/Error.h"

namespace vlm::host {

void DatabaseWriter::CreateTables(const DatabaseSchema& schema) {
    for (const std::string& statement : Dialect().Tables(schema)) Run(statement);
}

void DatabaseWriter::CreateIndices(const DatabaseSchema& schema) {
    for (const std::string& statement : Dialect().Indices(schema)) Run(statement);
}

DatabaseWriter::Rows::Rows(DatabaseWriter& writer, std::string_view table, std::string_view columns)
    : writer_(&writer),
      columns_(static_cast<std::size_t>(std::count(columns.begin(), columns.end(), ',')) + 1),
      insertion_(writer.Into(table, columns)) {}

void DatabaseWriter::Rows::Add(Cells cells) {
    if (cells.size() != columns_) throw Error("Numero di valori errato per una riga di \"" + writer_->Name() + "\".");
    insertion_->Add(cells);
    ++writer_->rowCount_;
}

}  // namespace vlm::host
