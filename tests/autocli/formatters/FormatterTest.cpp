#include <CppTools/autocli/formatters/CliDispatcherHelpFormatter.h>
#include <CppTools/autocli/formatters/CommandHelpFormatter.h>
#include <CppTools/autocli/formatters/DisplayContext.h>
#include <CppTools/autocli/formatters/FormatParameters.h>
#include <CppTools/autocli/formatters/Formatter.h>
#include <CppTools/autocli/formatters/JsonFormatter.h>
#include <CppTools/autocli/formatters/PythonFormatter.h>
#include <CppTools/autocli/formatters/SimpleFormatter.h>
#include <CppTools/autocli/formatters/TableFormatter.h>
#include <CppTools/autocli/formatters/XmlFormatter.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaObject.h>

#include <tests/support/Rendering.h>
#include <tests/support/Values.h>
#include <tests/support/VirtualSlot.h>
#include <tests/support/VirtualTableSize.h>

#include <gtest/gtest.h>

#include <ios>
#include <locale>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using CppTools::AutoCli::CliDispatcherHelpFormatter;
using CppTools::AutoCli::CommandHelpFormatter;
using CppTools::AutoCli::DisplayContext;
using CppTools::AutoCli::FormatParameters;
using CppTools::AutoCli::Formatter;
using CppTools::AutoCli::FormatterParam;
using CppTools::AutoCli::JsonFormatter;
using CppTools::AutoCli::PythonFormatter;
using CppTools::AutoCli::SimpleFormatter;
using CppTools::AutoCli::TableFormatter;
using CppTools::AutoCli::XmlFormatter;
using CppTools::MetaObj::MetaInt;
using TestSupport::DocumentedParams;
using TestSupport::DocumentedParamsOf;
using TestSupport::Render;
using TestSupport::Rendering;
using TestSupport::RenderWith;
using TestSupport::Rows;
using TestSupport::Struct;
using TestSupport::VirtualSlotOf;
using TestSupport::VirtualTableSizeOf;

static_assert(std::is_abstract_v<Formatter>);
static_assert(std::has_virtual_destructor_v<Formatter>);
static_assert(sizeof(Formatter) == sizeof(void*) + sizeof(std::string) +
                                       sizeof(std::vector<FormatterParam>) + sizeof(std::string));

/// Writes the plain text of the root, its own name and one parameter.
class PlainFormatter : public Formatter {
  public:
    using Formatter::Formatter;

    bool Format(const std::shared_ptr<CppTools::CallSpec::Output>& output, FormatParameters& params,
                DisplayContext& display, std::ostream& out) override {
        out << GetName() << ' ' << *output->GetRootObject() << ' ' << params.GetParameter("key")
            << ' ' << display.width;
        return !params.HasParameter("fail");
    }

    void Describe() {
        SetDescription("Plain text.");
        AddParam("fields:<TypeName>", "Which fields", true);
        AddParam("key", "Some key");
        AddParam("another", "", false);
    }
};

TEST(FormatterTest, New_KeepsTheNameExactly) {
    EXPECT_EQ(PlainFormatter("plain text/1").GetName(), "plain text/1");
}

TEST(FormatterTest, New_NameCanBeEmpty) {
    EXPECT_EQ(PlainFormatter("").GetName(), "");
}

TEST(FormatterTest, New_DescriptionIsEmpty) {
    EXPECT_EQ(PlainFormatter("plain").GetDescription(), "");
}

TEST(FormatterTest, New_DocumentsNoParameters) {
    EXPECT_EQ(DocumentedParamsOf(PlainFormatter("plain")), DocumentedParams());
}

TEST(FormatterTest, Describe_DescriptionIsKept) {
    PlainFormatter formatter("plain");
    formatter.Describe();
    EXPECT_EQ(formatter.GetDescription(), "Plain text.");
}

TEST(FormatterTest, Describe_ParametersKeepTheOrderInWhichTheyWereAdded) {
    PlainFormatter formatter("plain");
    formatter.Describe();
    EXPECT_EQ(DocumentedParamsOf(formatter), (DocumentedParams{
                                                 {"fields:<TypeName>", "Which fields", true},
                                                 {"key", "Some key", false},
                                                 {"another", "", false},
                                             }));
}

TEST(FormatterTest, Describe_NameStays) {
    PlainFormatter formatter("plain");
    formatter.Describe();
    EXPECT_EQ(formatter.GetName(), "plain");
}

TEST(FormatterTest, Accessors_GiveReferencesToTheFields) {
    const PlainFormatter formatter("plain");
    EXPECT_EQ(&formatter.GetName(), &formatter.GetName());
    EXPECT_EQ(&formatter.GetDescription(), &formatter.GetDescription());
    EXPECT_EQ(&formatter.GetParams(), &formatter.GetParams());
}

TEST(FormatterTest, Format_ReachesTheConcreteFormatterThroughTheBase) {
    const std::shared_ptr<Formatter> formatter = std::make_shared<PlainFormatter>("plain");
    EXPECT_EQ(Render(*formatter, MetaInt::New(7), {{"key", "value"}}, 80),
              Rendering(true, "plain 7 value 80"));
    EXPECT_EQ(Render(*formatter, MetaInt::New(7), {{"fail", ""}}), Rendering(false, "plain 7  0"));
}

TEST(FormatterTest, Destructor_OfTheConcreteFormatterRunsThroughTheBase) {
    struct Witness : PlainFormatter {
        explicit Witness(bool& gone) : PlainFormatter("witness"), gone_(gone) {}

        ~Witness() override { gone_ = true; }

        bool& gone_;
    };

    bool gone = false;
    std::unique_ptr<Formatter> formatter = std::make_unique<Witness>(gone);
    formatter.reset();
    EXPECT_TRUE(gone);
}

TEST(FormatterTest, VirtualOperations_EndWithFormat) {
    EXPECT_EQ(VirtualTableSizeOf<Formatter>(), 3);
}

TEST(FormatterParamTest, New_IsEmptyAndUnflagged) {
    const FormatterParam param;
    EXPECT_EQ(param.name, "");
    EXPECT_EQ(param.description, "");
    EXPECT_FALSE(param.flag);
}

TEST(FormatterParamTest, Record_HoldsNameDescriptionAndFlagInThisOrder) {
    const FormatterParam param{"fields", "Which fields", true};
    EXPECT_EQ(param.name, "fields");
    EXPECT_EQ(param.description, "Which fields");
    EXPECT_TRUE(param.flag);
}

// --- What the formatters of the engine have in common

/// What a formatter writes to a stream that shows plain numbers in another way.
template <typename Concrete>
std::string OnAnOddStream(const std::shared_ptr<CppTools::MetaObj::MetaObject>& root) {
    struct Grouping : std::numpunct<char> {
        Grouping() : std::numpunct<char>(1) {}

        std::string do_grouping() const override { return "\1"; }
    };

    Grouping grouping; // is its own reference, so that no locale deletes it

    const auto output = CppTools::CallSpec::Output::New();
    output->SetRootObject(root);
    FormatParameters params;
    DisplayContext display;
    std::ostringstream out;
    out.imbue(std::locale(std::locale::classic(), &grouping));
    out << std::hex << std::showbase << std::showpos;
    Concrete().Format(output, params, display, out);
    return out.str();
}

TEST(FormattersTest, Integers_AreDecimalOnEveryStream) {
    const auto root = MetaInt::New(255);
    EXPECT_EQ(OnAnOddStream<SimpleFormatter>(root), "255\n");
    EXPECT_EQ(OnAnOddStream<JsonFormatter>(root), "255\n");
    EXPECT_EQ(OnAnOddStream<PythonFormatter>(root), "255\n");
    EXPECT_EQ(OnAnOddStream<XmlFormatter>(root), RenderWith<XmlFormatter>(root).second);
    const auto rows = Rows({Struct("T", {{"a", root}})});
    EXPECT_EQ(OnAnOddStream<TableFormatter>(rows), "a\n-\n255  \n");
}

template <typename Concrete>
class ConcreteFormatterTest : public testing::Test {};

using ConcreteFormatters =
    testing::Types<CliDispatcherHelpFormatter, CommandHelpFormatter, JsonFormatter, PythonFormatter,
                   SimpleFormatter, TableFormatter, XmlFormatter>;
TYPED_TEST_SUITE(ConcreteFormatterTest, ConcreteFormatters);

TYPED_TEST(ConcreteFormatterTest, Class_AddsNothingToItsBase) {
    static_assert(std::is_convertible_v<TypeParam*, Formatter*>);
    EXPECT_EQ(sizeof(TypeParam), sizeof(Formatter));
}

TYPED_TEST(ConcreteFormatterTest, Format_FollowsTheDestructorInTheTableOfVirtualOperations) {
    using Operation = bool (TypeParam::*)(const std::shared_ptr<CppTools::CallSpec::Output>&,
                                          FormatParameters&, DisplayContext&, std::ostream&);
    EXPECT_EQ(VirtualSlotOf(static_cast<Operation>(&TypeParam::Format)), 2);
    EXPECT_EQ(VirtualSlotOf(&Formatter::Format), 2);
}

TYPED_TEST(ConcreteFormatterTest, Class_HasNoOtherVirtualOperations) {
    EXPECT_EQ(VirtualTableSizeOf<TypeParam>(), 3);
}

} // namespace
