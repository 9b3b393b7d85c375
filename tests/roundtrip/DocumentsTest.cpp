#include "Documents.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// The comparison that the other tests rely on must not agree with everything.

namespace {

using RoundTrip::Documents;
using RoundTrip::kRefused;
using RoundTrip::PythonTuple;

/// Documents, and what is expected of each.
using Expectations = std::vector<std::pair<std::string, std::string>>;

std::string Comparison(const std::string& kind, const Expectations& expectations) {
    Documents documents(kind);
    for (const auto& [document, expected] : expectations) {
        documents.Add(document, expected);
    }
    return documents.Compared();
}

TEST(DocumentsTest, Compared_AnyDifference_IsPrinted) {
    const Expectations different = {
        {"1", PythonTuple(TestSupport::Int(2))},
        {"1", PythonTuple(TestSupport::Bool(true))},
        {"true", PythonTuple(TestSupport::Int(1))},
        {"\"a\"", PythonTuple(TestSupport::Text("b"))},
        {"[1]", PythonTuple(TestSupport::Ints({1, 2}))},
        {"{\"b\": 1, \"a\": 1}", "('struct', b'T', [(b'a', ('int', 1)), (b'b', ('int', 1))])"},
        {"{\"a\": 1, \"a\": 1}", "('struct', b'T', [(b'a', ('int', 1))])"},
        {"[", PythonTuple(TestSupport::Ints({}))},
        {"[]", kRefused}};
    EXPECT_EQ(Comparison("json", different),
              "10000.document\nexpected ('int', 2)\nread     ('int', 1)\n"
              "10001.document\nexpected ('bool', True)\nread     ('int', 1)\n"
              "10002.document\nexpected ('int', 1)\nread     ('bool', True)\n"
              "10003.document\nexpected ('text', b'b')\nread     ('text', b'a')\n"
              "10004.document\nexpected ('list', [('int', 1), ('int', 2)])\n"
              "read     ('list', [('int', 1)])\n"
              "10005.document\n"
              "expected ('struct', [(b'a', ('int', 1)), (b'b', ('int', 1))])\n"
              "read     ('struct', [(b'b', ('int', 1)), (b'a', ('int', 1))])\n"
              "10006.document\nexpected ('struct', [(b'a', ('int', 1))])\n"
              "read     ('struct', [(b'a', ('int', 1)), (b'a', ('int', 1))])\n"
              "10007.document\nexpected ('list', [])\nread     ('refused',)\n"
              "10008.document\nexpected ('refused',)\nread     ('list', [])\n"
              "9 documents\n");
}

TEST(DocumentsTest, Compared_AnyDifferenceOfPython_IsPrinted) {
    const Expectations different = {
        {"1", PythonTuple(TestSupport::Bool(true))},
        {R"("""a\n""")", PythonTuple(TestSupport::Text("a"))},
        {"[True, ]", PythonTuple(TestSupport::Ints({1}))},
        {R"({"b": 1, "a": 1, })", "('struct', b'T', [(b'a', ('int', 1)), (b'b', ('int', 1))])"},
        {"[1", PythonTuple(TestSupport::Ints({1}))},
        {"{}", kRefused}};
    EXPECT_EQ(Comparison("python", different),
              "10000.document\nexpected ('bool', True)\nread     ('int', 1)\n"
              "10001.document\nexpected ('text', b'a')\nread     ('text', b'a\\n')\n"
              "10002.document\nexpected ('list', [('int', 1)])\n"
              "read     ('list', [('bool', True)])\n"
              "10003.document\n"
              "expected ('struct', [(b'a', ('int', 1)), (b'b', ('int', 1))])\n"
              "read     ('struct', [(b'b', ('int', 1)), (b'a', ('int', 1))])\n"
              "10004.document\nexpected ('list', [('int', 1)])\nread     ('refused',)\n"
              "10005.document\nexpected ('refused',)\nread     ('struct', [])\n"
              "6 documents\n");
}

std::string XmlWith(const std::string& metaData, const std::string& root) {
    return "<output><meta-data>" + metaData + "</meta-data><root>" + root + "</root></output>";
}

TEST(DocumentsTest, Compared_AnyDifferenceOfXml_IsPrinted) {
    const Expectations different = {
        {XmlWith("", "<integer>1</integer>"), "([], ('int', 2))"},
        {XmlWith("", "<string>1</string>"), "([], ('int', 1))"},
        {XmlWith("", R"(<list type="integer"/>)"), "([], ('list', 'string', []))"},
        {XmlWith("", R"(<structure typeName="U"/>)"), "([], ('struct', b'T', []))"},
        {XmlWith(R"(<meta-data-field name="a" value="b"/>)", ""), "([], None)"},
        {XmlWith("", "") + "<", "([], None)"},
        {XmlWith("", ""), kRefused}};
    EXPECT_EQ(Comparison("xml", different),
              "10000.document\nexpected ([], ('int', 2))\nread     ([], ('int', 1))\n"
              "10001.document\nexpected ([], ('int', 1))\nread     ([], ('text', b'1'))\n"
              "10002.document\nexpected ([], ('list', 'string', []))\n"
              "read     ([], ('list', 'integer', []))\n"
              "10003.document\nexpected ([], ('struct', b'T', []))\n"
              "read     ([], ('struct', b'U', []))\n"
              "10004.document\nexpected ([], None)\nread     ([(b'a', b'b')], None)\n"
              "10005.document\nexpected ([], None)\nread     ('refused',)\n"
              "10006.document\nexpected ('refused',)\nread     ([], None)\n"
              "7 documents\n");
}

TEST(DocumentsTest, Run_DocumentThatIsNotWellFormed_IsToldByTheProgram) {
    Documents documents("xml");
    documents.Add(XmlWith("", ""), "([], None)");
    EXPECT_EQ(documents.Run({"xmllint", "--noout"}).status, 0);
    documents.Add(XmlWith("", "<string>"), kRefused);
    const auto run = documents.Run({"xmllint", "--noout"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err, "");
}

} // namespace
