#include "Documents.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// The comparison that the other tests rely on must not agree with everything.

namespace {

using RoundTrip::Documents;
using RoundTrip::kRefused;
using RoundTrip::PythonTuple;

TEST(DocumentsTest, Compared_AnyDifference_IsPrinted) {
    Documents documents("json");
    const std::vector<std::pair<std::string, std::string>> different = {
        {"1", PythonTuple(TestSupport::Int(2))},
        {"1", PythonTuple(TestSupport::Bool(true))},
        {"true", PythonTuple(TestSupport::Int(1))},
        {"\"a\"", PythonTuple(TestSupport::Text("b"))},
        {"[1]", PythonTuple(TestSupport::Ints({1, 2}))},
        {"{\"b\": 1, \"a\": 1}", "('struct', b'T', [(b'a', ('int', 1)), (b'b', ('int', 1))])"},
        {"{\"a\": 1, \"a\": 1}", "('struct', b'T', [(b'a', ('int', 1))])"},
        {"[", PythonTuple(TestSupport::Ints({}))},
        {"[]", kRefused}};
    for (const auto& [document, expected] : different) {
        documents.Add(document, expected);
    }
    EXPECT_EQ(documents.Compared(),
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

} // namespace
