#pragma once

#include <CppTools/callspec/Input.h>

#include <list>

namespace CppTools::AutoCli {

/// The input of a command called through the tree: it also knows the name under which the tool
/// was invoked and the path of the command.
class CPPTOOLS_EXPORT CommandInput : public CallSpec::Input {
  public:
    CommandInput();
    ~CommandInput() override;

    /// Makes one without a tool, a path or parameters.
    static std::shared_ptr<CommandInput> New();

    /// The tool's name as help shows it; empty until set.
    void SetDispatcher(const std::string& dispatcher);

    /// Valid until the name is set again.
    const std::string& GetDispatcher() const { return dispatcher_; }

    /// Replaces the path, the names below the root.
    void SetCommandPath(const std::list<std::string>& path);

    /// The names as they are kept; whoever changes them changes the path.
    std::list<std::string>& GetCommandPath() { return commandPath_; }

    /// The names joined by one blank.
    std::string GetCommandPathString() const;

  private:
    std::string dispatcher_;
    std::list<std::string> commandPath_;
};

} // namespace CppTools::AutoCli
