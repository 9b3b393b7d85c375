#pragma once

#include "../Record.h"

#include <istream>
#include <string>
#include <vector>

/// A reader for each format. All hand over one record after the other and keep none. They throw
/// InputError for what the format does not allow, naming the line, and for input that was cut
/// short; what the sink throws passes through.
namespace TandrilResult {

/// One JSON value. The keys of `path` lead from it to where the records stand: an array of them,
/// or a single one. Floating-point numbers become the text that stood in the input.
void ReadJson(std::istream& input, const std::vector<std::string>& path, const RecordSink& take);

/// A JSON value in each line, each read as `ReadJson` reads one. Empty lines are passed over.
void ReadJsonLines(std::istream& input, const std::vector<std::string>& path,
                   const RecordSink& take);

/// Cells between tabs; lines end in LF or CRLF. Without `columns` the first line names them.
void ReadTsv(std::istream& input, const std::vector<std::string>& columns, const RecordSink& take);

/// RFC 4180: cells between commas, in quotes where they hold a comma, quote or line end. Lines end
/// in LF or CRLF, the last one perhaps in neither.
void ReadCsv(std::istream& input, const std::vector<std::string>& columns, const RecordSink& take);

/// Pieces "key=value", each ended by `terminator`. An empty piece ends the record.
void ReadPairs(std::istream& input, char terminator, const RecordSink& take);

/// Values ended by NUL; every so many of them as there are columns make a record.
void ReadNulColumns(std::istream& input, const std::vector<std::string>& columns,
                    const RecordSink& take);

/// Pieces ended by `terminator`, each a text that is a value of its own.
void ReadPieces(std::istream& input, char terminator, const RecordSink& take);

} // namespace TandrilResult
