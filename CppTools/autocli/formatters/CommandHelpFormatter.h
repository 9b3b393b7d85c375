#pragma once

#include <CppTools/autocli/formatters/Formatter.h>

namespace CppTools::AutoCli {

/// "commandhelp": the help of one command, from its help record.
class CPPTOOLS_EXPORT CommandHelpFormatter : public Formatter {
  public:
    CommandHelpFormatter();
    ~CommandHelpFormatter() override;

    /// Always true. Throws "Error: Unexpected type for output, formatter expected a struct with
    /// help information" for any other record. The parameters are not looked at.
    bool Format(const std::shared_ptr<CallSpec::Output>& output, FormatParameters& params,
                DisplayContext& display, std::ostream& out) override;
};

} // namespace CppTools::AutoCli
