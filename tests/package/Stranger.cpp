// Prints what casts and exceptions come to that cross the border of the installed library, in both
// directions.

#include <CppTools/CppTools.h>

#include <iostream>

namespace {

using CppTools::CppToolException;
using CppTools::AutoCli::CliDispatcher;
using CppTools::AutoCli::Command;
using CppTools::AutoCli::CommandInput;
using CppTools::AutoCli::CommandOutput;
using CppTools::CallSpec::Input;
using CppTools::CallSpec::InputSpec;
using CppTools::CallSpec::Output;
using CppTools::CallSpec::OutputSpec;
using CppTools::MetaObj::MetaInt;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaObject;
using CppTools::MetaObj::MetaString;
using CppTools::MetaObj::MetaStruct;

class OwnException : public CppToolException {
  public:
    OwnException() : CppToolException("the stranger's own reason") {}
};

/// Nothing that the library could know.
struct ForeignFailure {
    int number;
};

class OwnCommand : public Command {
  public:
    explicit OwnCommand(bool isForeign) : isForeign_(isForeign) {}

    std::shared_ptr<InputSpec> GetInputSpecInternal() override { return InputSpec::New(); }

    std::shared_ptr<OutputSpec> GetOutputSpecInternal() override {
        auto spec = OutputSpec::New();
        spec->SetRootObject(MetaString::New());
        return spec;
    }

    void ExecuteInternal(const std::shared_ptr<Input>& input,
                         const std::shared_ptr<Output>&) override {
        if (isForeign_) {
            throw ForeignFailure{42};
        }
        const bool isThroughTool = dynamic_cast<const CommandInput*>(input.get()) != nullptr;
        std::cout << "called through the tool: " << (isThroughTool ? "yes" : "no") << '\n';
        throw OwnException();
    }

  private:
    bool isForeign_;
};

template <typename Kind>
void PrintCast(const char* question, const std::shared_ptr<MetaObject>& value) {
    std::cout << question << (std::dynamic_pointer_cast<Kind>(value) ? "yes" : "no") << '\n';
}

void CatchFromLibrary() {
    try {
        MetaStruct::New("no name");
    } catch (const CppToolException& refused) {
        std::cout << "caught: " << refused.what() << '\n';
    }
}

void CastFromLibrary() {
    const auto value = CppTools::AutoCli::XmlUtil_ParseXmlOutput(
        "<o><structure typeName='T'><field name='a'><int>1</int></field></structure></o>");
    PrintCast<MetaStruct>("a structure: ", value);
    PrintCast<MetaList>("a list: ", value);
    const auto field = std::dynamic_pointer_cast<MetaStruct>(value)->GetField("a");
    PrintCast<MetaInt>("its field is an integer: ", field);
    PrintCast<MetaString>("its field is a string: ", field);
}

void RunOwn(bool isForeign) {
    CliDispatcher dispatcher;
    dispatcher.GetRootNamespace()->SubNamespace("own")->RegisterNamespaceNode(
        std::make_shared<OwnCommand>(isForeign), "work");
    std::list<std::string> path{"own", "work"};
    const auto input = CommandInput::New();
    input->SetCommandPath(path);
    const auto output = CommandOutput::New();
    dispatcher.ExecuteCommand(input, output);
    for (const std::string& error : output->GetErrors()) {
        std::cout << error << '\n';
    }
}

} // namespace

int main() {
    CatchFromLibrary();
    CastFromLibrary();
    RunOwn(false);
    try {
        RunOwn(true);
    } catch (const ForeignFailure& failure) {
        std::cout << "not the library's: " << failure.number << '\n';
    }
}
