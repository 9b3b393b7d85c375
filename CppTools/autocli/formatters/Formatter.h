#pragma once

#include <CppTools/Export.h>

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace CppTools::CallSpec {
class Output;
} // namespace CppTools::CallSpec

namespace CppTools::AutoCli {

class DisplayContext;
class FormatParameters;

/// The documentation of one formatter parameter.
struct CPPTOOLS_EXPORT FormatterParam {
    std::string name;        ///< The key, possibly with a placeholder: "fields:<TypeName>".
    std::string description; ///< One sentence for users.
    bool flag = false;       ///< Carried along; true for the table formatter's fields alone.
};

/// Renders results as text. A formatter keeps nothing between calls, so that one instance serves
/// any number of them. Problems of the data become part of the text; a formatter throws only
/// when the root value is of the wrong kind for it.
class CPPTOOLS_EXPORT Formatter {
  public:
    /// `name` is the key in the registry of formatters and never changes.
    explicit Formatter(const std::string& name);
    virtual ~Formatter();
    Formatter(const Formatter&) = delete;
    Formatter& operator=(const Formatter&) = delete;

    /// Renders the root object of `output` to `out`. The display is only needed by formatters
    /// that fit text to its width.
    virtual bool Format(const std::shared_ptr<CallSpec::Output>& output, FormatParameters& params,
                        DisplayContext& display, std::ostream& out) = 0;

    /// The name under which users choose the formatter.
    const std::string& GetName() const { return name_; }

    /// One sentence for users.
    const std::string& GetDescription() const { return description_; }

    /// The documented parameters.
    const std::vector<FormatterParam>& GetParams() const { return params_; }

  protected:
    /// For constructors of formatters: what `GetDescription` and `GetParams` answer.
    void SetDescription(std::string description);
    void AddParam(std::string name, std::string description, bool flag = false);

  private:
    std::string description_;
    std::vector<FormatterParam> params_;
    std::string name_;
};

} // namespace CppTools::AutoCli
