#include <CppTools/autocli/formatters/JsonFormatter.h>
#include <CppTools/autocli/formatters/PythonFormatter.h>
#include <CppTools/autocli/formatters/SimpleFormatter.h>
#include <CppTools/autocli/formatters/TableFormatter.h>
#include <CppTools/autocli/formatters/XmlFormatter.h>

#include <tests/support/ImpostorValue.h>
#include <tests/support/Rendering.h>
#include <tests/support/Values.h>

#include <gtest/gtest.h>

#include <ios>
#include <memory>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>

namespace {

using CppTools::AutoCli::DisplayContext;
using CppTools::AutoCli::FormatParameters;
using CppTools::AutoCli::Formatter;
using CppTools::AutoCli::JsonFormatter;
using CppTools::AutoCli::PythonFormatter;
using CppTools::AutoCli::SimpleFormatter;
using CppTools::AutoCli::TableFormatter;
using CppTools::AutoCli::XmlFormatter;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaObject;
using CppTools::MetaObj::MetaType;
using TestSupport::ElementsOf;
using TestSupport::Rows;
using TestSupport::Struct;
using TestSupport::Text;
using TestSupport::Value;

/// A stream that takes nothing and was asked to throw.
class FullStream : public std::ostream {
  public:
    FullStream() : std::ostream(&buffer_) { exceptions(std::ios_base::badbit); }

  private:
    class FullBuffer : public std::streambuf {};

    FullBuffer buffer_;
};

void FormatTo(std::ostream& out, Formatter& formatter, const Value& root) {
    const auto output = CppTools::CallSpec::Output::New();
    output->SetRootObject(root);
    FormatParameters params;
    DisplayContext display;
    formatter.Format(output, params, display, out);
}

template <typename AnyFormatter>
class FailingStreamTest : public testing::Test {};

using Formatters =
    testing::Types<JsonFormatter, PythonFormatter, SimpleFormatter, TableFormatter, XmlFormatter>;
TYPED_TEST_SUITE(FailingStreamTest, Formatters);

TYPED_TEST(FailingStreamTest, Format_StreamThatThrows_ThrowsToo) {
    TypeParam formatter;
    FullStream out;
    EXPECT_THROW(FormatTo(out, formatter, Rows({Struct("T", {{"a", Text("x")}})})),
                 std::ios_base::failure);
}

TEST(FailingStreamTableTest, Format_RefusedRowOnAStreamThatThrows_ThrowsToo) {
    TableFormatter formatter;
    FullStream out;
    const auto rows = Rows({Struct("T", {{"a.b", Text("x")}})});
    EXPECT_THROW(FormatTo(out, formatter, rows), std::ios_base::failure);
}

/// A value of a stranger that cannot say what it is.
class SpeechlessValue final : public MetaObject {
  public:
    SpeechlessValue() : MetaObject(MetaType::String, FactoryFlag{}) {}

    std::string ToString() const override { throw std::runtime_error("speechless"); }
};

Value StructureWithASpeechlessValue() {
    const auto texts = MetaList::New(MetaType::String);
    texts->Add("to be replaced");
    ElementsOf(texts)[0] = std::make_shared<SpeechlessValue>();
    return Struct("T", {{"a", Text("x")}, {"b", texts}, {"c", Text("never seen")}});
}

TEST(FailingStreamValueTest, Format_ValueThatThrows_WhatCameBeforeItIsSeen) {
    SimpleFormatter formatter;
    std::ostringstream out;
    EXPECT_THROW(FormatTo(out, formatter, StructureWithASpeechlessValue()), std::runtime_error);
    EXPECT_EQ(out.str(), "T:\n   a: x\n   b: ");
}

TEST(FailingStreamValueTest, Format_ValueAndStreamThatThrow_TheValuesExceptionArrives) {
    SimpleFormatter formatter;
    FullStream out;
    EXPECT_THROW(FormatTo(out, formatter, StructureWithASpeechlessValue()), std::runtime_error);
}

} // namespace
