#include "HelpText.h"

namespace TandrilResult {

const char kHelpText[] =
    R"(Usage: tandril-result --from FORMAT (--structure NAME | --list TYPE) [OPTION]...
                      [-- PROGRAM [ARGUMENT]...]

Turns what the program prints, or standard input, into the result document of an
extension command. When that fails, ERROR: lines say why and the status is 1.

Input:
  --from FORMAT       json     one value; records are the elements of an array
                      jsonl    a JSON value in each line
                      tsv      columns between tabs, named by the first line
                      csv      columns between commas, named by the first line
                      pairs    lines key=value; an empty line ends a record
                      nul      pairs, columns or values, each ended by NUL
                      lines    each line is a value
  --columns A,B,...   names of the columns, which no line names then
  --rows PATH         keys with dots between them that lead to the records
  --each KEY          rows are the elements of this list in each record
  --children KEY      records in this list follow the one that holds them
  --empty-status N    a program that prints nothing and ends with status N has
                      found nothing; any other status but 0 is a failure
  --argument-from-input  what stands on standard input is the program's last
                      argument, byte for byte

Result:
  --structure NAME    structures of this type name
  --list TYPE         values of this type: int, bool or string
  --one               not a list but the one record or value that there is
  --field NAME[:TYPE][=SOURCE]
                      a field; without any, all columns or keys become fields.
                      TYPE is int, bool, string (unless given), int-list,
                      bool-list or string-list. SOURCE is a column, a key or a
                      path of keys; each ^ before it leads to the record around
  --infer             types that are not given follow the first row
  --default NAME=VALUE  the value of a field that has none
  --fill              others that have none are empty, 0 or false
                      (without these, a missing value is an error)

  --help, --version   print this text or the version
)";

} // namespace TandrilResult
