#pragma once

#include <CppTools/autocli/formatters/Formatter.h>

namespace CppTools::MetaObj {
class MetaList;
class MetaStruct;
} // namespace CppTools::MetaObj

namespace CppTools::AutoCli {

/// "clihelp": the listing of a namespace, from its listing record.
class CPPTOOLS_EXPORT CliDispatcherHelpFormatter : public Formatter {
  public:
    CliDispatcherHelpFormatter();
    ~CliDispatcherHelpFormatter() override;

    /// Always true. Throws "Error: Unexpected type for help output, formatter expected a struct
    /// with help data" for any other record. The parameters are not looked at.
    bool Format(const std::shared_ptr<CallSpec::Output>& output, FormatParameters& params,
                DisplayContext& display, std::ostream& out) override;

    /// Sets `value` to a string field. When `st` has none of that name, `value` becomes the name
    /// between angle brackets and the answer is false.
    bool ExtractString(const std::string& name, std::shared_ptr<MetaObj::MetaStruct> st,
                       std::string& value);

    /// Writes the table of the nodes whose "Type" is `kind`, under a heading. Always true: an
    /// empty `nodes` is reported in the text.
    bool HandleList(const std::string& kind, std::shared_ptr<MetaObj::MetaList> nodes,
                    DisplayContext& display, std::ostream& out);
};

} // namespace CppTools::AutoCli
