#pragma once

#include <CppTools/autocli/formatters/Formatter.h>

namespace CppTools::MetaObj {
class MetaObject;
} // namespace CppTools::MetaObj

namespace CppTools::AutoCli {

/// "python": the result as one line that Python's eval() reads.
class CPPTOOLS_EXPORT PythonFormatter : public Formatter {
  public:
    PythonFormatter();
    ~PythonFormatter() override;

    /// Always true. Throws "Invalid MetaObject passed to Format in PythonFormatter" when there is
    /// no root object.
    bool Format(const std::shared_ptr<CallSpec::Output>& output, FormatParameters& params,
                DisplayContext& display, std::ostream& out) override;

    /// Writes one value; throws as above for an empty one. The level changes nothing.
    void Format(std::shared_ptr<MetaObj::MetaObject> value, std::ostream& out, int level);

    /// Whether every byte is below 0x80.
    static bool IsAllAscii(const std::string& text);
};

} // namespace CppTools::AutoCli
