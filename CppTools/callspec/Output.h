#pragma once

#include <CppTools/Export.h>

#include <memory>
#include <string>
#include <vector>

namespace CppTools::MetaObj {
class MetaObject;
class MetaBool;
class MetaInt;
class MetaString;
class MetaList;
class MetaStruct;
} // namespace CppTools::MetaObj

namespace CppTools::CallSpec {

/// What one call produced: a root value, the messages of everything that went wrong, and
/// whether the value is an ordinary result or a help record.
class CPPTOOLS_EXPORT Output {
  public:
    /// The numbers are part of the interface.
    enum class OutputType : int {
        Result = 0,
        Help = 2, ///< A help record, to be shown as help.
    };

    Output();
    virtual ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    /// Makes one without a result and without messages.
    static std::shared_ptr<Output> New();

    /// Adds a message for the user; the call has failed from then on.
    void AddErrorMessage(const std::string& message);
    void AddErrorMessage(const char* message);
    void AddErrorMessage(std::string&& message);

    /// Whether any message was added: the call failed.
    bool HasError() const { return !errors_.empty(); }

    /// In the order added; valid until the next is added.
    const std::vector<std::string>& GetErrors() const { return errors_; }

    /// Shares the value as it is, the empty pointer included.
    void SetRootObject(const std::shared_ptr<MetaObj::MetaObject>& root);
    void SetRootObject(const std::shared_ptr<MetaObj::MetaBool>& root);
    void SetRootObject(const std::shared_ptr<MetaObj::MetaInt>& root);
    void SetRootObject(const std::shared_ptr<MetaObj::MetaString>& root);
    void SetRootObject(const std::shared_ptr<MetaObj::MetaList>& root);
    void SetRootObject(const std::shared_ptr<MetaObj::MetaStruct>& root);

    /// Empty until one was set.
    std::shared_ptr<MetaObj::MetaObject> GetRootObject() const { return rootObject_; }

    /// Says what the root value is. `Result` until set.
    void SetOutputType(OutputType type) { outputType_ = type; }

    /// What the root value is.
    OutputType GetOutputType() const { return outputType_; }

  private:
    std::vector<std::string> errors_;
    std::shared_ptr<MetaObj::MetaObject> rootObject_;
    OutputType outputType_ = OutputType::Result;
};

} // namespace CppTools::CallSpec
