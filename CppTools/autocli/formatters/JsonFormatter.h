#pragma once

#include <CppTools/autocli/formatters/Formatter.h>

namespace CppTools::MetaObj {
class MetaObject;
} // namespace CppTools::MetaObj

namespace CppTools::AutoCli {

/// "json": the result as JSON text over several lines. Bytes outside printable ASCII are escaped
/// one by one, so that a character of several bytes becomes several escapes.
class CPPTOOLS_EXPORT JsonFormatter : public Formatter {
  public:
    JsonFormatter();
    ~JsonFormatter() override;

    /// Always true. Without a root object only the closing line end is written.
    bool Format(const std::shared_ptr<CallSpec::Output>& output, FormatParameters& params,
                DisplayContext& display, std::ostream& out) override;

    /// Writes one value at a nesting level, three columns each; an empty one writes nothing.
    void Format(std::shared_ptr<MetaObj::MetaObject> value, std::ostream& out, int level);
};

} // namespace CppTools::AutoCli
