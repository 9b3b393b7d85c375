#pragma once

#include <CppTools/autocli/formatters/Formatter.h>

namespace CppTools::MetaObj {
class MetaList;
class MetaObject;
class MetaStruct;
} // namespace CppTools::MetaObj

namespace CppTools::AutoCli {

/// "simple": any result for human eyes. Structures become indented blocks under a header, lists
/// of structures follow each other separated by empty lines. A result without a root object
/// prints nothing.
class CPPTOOLS_EXPORT SimpleFormatter : public Formatter {
  public:
    SimpleFormatter();
    ~SimpleFormatter() override;

    /// Always true.
    bool Format(const std::shared_ptr<CallSpec::Output>& output, FormatParameters& params,
                DisplayContext& display, std::ostream& out) override;

    /// Writes one value at a nesting level, three columns each; an empty one writes nothing.
    void Format(std::shared_ptr<MetaObj::MetaObject> value, FormatParameters& params,
                std::ostream& out, int level);

    /// The parts of `Format` for a structure and for a list, with the same rule for empty ones.
    void FormatStruct(std::shared_ptr<MetaObj::MetaStruct> st, FormatParameters& params,
                      std::ostream& out, int level);
    void FormatList(std::shared_ptr<MetaObj::MetaList> list, FormatParameters& params,
                    std::ostream& out, int level);
};

} // namespace CppTools::AutoCli
