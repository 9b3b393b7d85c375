#pragma once

#include <CppTools/callspec/Output.h>

namespace CppTools::AutoCli {

/// The output of a command called through the tree, with room for its rendered form.
class CPPTOOLS_EXPORT CommandOutput : public CallSpec::Output {
  public:
    CommandOutput();
    ~CommandOutput() override;

    /// Makes one without a result, messages or rendered form.
    static std::shared_ptr<CommandOutput> New();

    /// Keeps a copy of the rendered result for whoever runs the command in process.
    void SetFormattedString(const std::string& text);

    /// Empty until set.
    const std::string& GetFormattedString() const { return formattedString_; }

  private:
    std::string formattedString_;
};

} // namespace CppTools::AutoCli
