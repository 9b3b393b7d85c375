#include <CppTools/autocli/plugins/XmlUtil.h>
#include <CppTools/metaobj/CppToolException.h>
#include <CppTools/metaobj/MetaObject.h>

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

// Integers in documents are read as a stream reads them, unlike those that users give.

namespace {

using CppTools::AutoCli::XmlUtil_ParseXmlOutput;

/// What a stream reads from the text, in decimal; empty when it reads no number.
std::string ReadByStream(const std::string& text) {
    std::istringstream in(text);
    long number = 0;
    return in >> number ? std::to_string(number) : "";
}

/// What a document with that text holds, in decimal; empty when it is refused.
std::string ReadFromDocument(const std::string& text) {
    try {
        return XmlUtil_ParseXmlOutput("<output><int>" + text + "</int></output>")->ToString();
    } catch (const CppTools::CppToolException&) {
        return "";
    }
}

class DocumentIntegerTest : public testing::TestWithParam<std::string> {};

TEST_P(DocumentIntegerTest, Read_AgreesWithAStream) {
    EXPECT_EQ(ReadFromDocument(GetParam()), ReadByStream(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Signs, DocumentIntegerTest,
                         testing::Values("+5", "-5", "+-5", "-+5", "++5", "--5", "+ 5", "+", "5-",
                                         "5+3", "-0", "+0"));
INSTANTIATE_TEST_SUITE_P(Blanks, DocumentIntegerTest,
                         testing::Values(" \t\n 5", "   ", "5 ", " +5", " -5x", "1 2"));
INSTANTIATE_TEST_SUITE_P(Digits, DocumentIntegerTest,
                         testing::Values("0", "007", "12abc", "abc12", "0x1F", "1e3", "1.5", ".5",
                                         "1,000", "1_000"));
INSTANTIATE_TEST_SUITE_P(Limits, DocumentIntegerTest,
                         testing::Values("9223372036854775807", "9223372036854775808",
                                         "-9223372036854775808", "-9223372036854775809",
                                         "+9223372036854775807", "+9223372036854775808",
                                         "99999999999999999999x"));

} // namespace
