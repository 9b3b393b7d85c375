#pragma once

#include <CppTools/autocli/formatters/Formatter.h>

namespace CppTools::AutoCli {

/// "table": a list of structures, one row each, in columns as wide as their widest cell, with an
/// optional header and an optional last column wrapped to the width of the display.
class CPPTOOLS_EXPORT TableFormatter : public Formatter {
  public:
    TableFormatter();
    ~TableFormatter() override;

    /// False when a row stopped the table; the reason is then in the text. Throws "Error:
    /// Unexpected type for output, formatter, table, expected a List of structs" and "Error:
    /// Unable to get structure type from list output." Columns that are named more than once
    /// share one width.
    bool Format(const std::shared_ptr<CallSpec::Output>& output, FormatParameters& params,
                DisplayContext& display, std::ostream& out) override;
};

} // namespace CppTools::AutoCli
