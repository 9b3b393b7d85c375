#include "Process.h"
#include "tests/support/NamedRow.h"

#include <gtest/gtest.h>

using ResultTests::RunLines;

namespace {

/// Lines of shell that print a million rows, and how to read them.
struct MillionRows : TestSupport::NamedRow {
    std::string producer;
    std::string options;
};

class MemoryTest : public testing::TestWithParam<MillionRows> {};

/// The documents are of more than 100 MB, the limit covers the libraries too.
TEST_P(MemoryTest, MillionRows_FitIntoAFewMegabytes) {
    const auto run =
        RunLines(GetParam().producer + " | (ulimit -v 65536; exec \"$RESULT\" --structure T " +
                 GetParam().options + ") | tail -n 2");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "<structure typeName=\"T\"><field name=\"a\"><int>1000000</int></field>"
                       "<field name=\"b\"><string>a name of some length, and then some more"
                       "</string></field></structure>\n</list></output>\n");
}

const std::string kJsonRows =
    R"(seq 1000000 | sed 's/.*/{"a": &, "b": "a name of some length, and then some more"}/)";
const std::string kCells = "a name of some length, and then some more";

const std::vector<MillionRows> kMillions = {
    {{"Json"}, kJsonRows + R"(; 1s/^/[/; $!s/$/,/; $s/$/]/')", "--from json --infer"},
    {{"JsonLines"}, kJsonRows + "'", "--from jsonl --infer"},
    {{"Tsv"}, "seq 1000000 | sed 's/$/\\t" + kCells + "/; 1s/^/a\\tb\\n/'", "--from tsv --infer"},
    {{"Csv"}, "seq 1000000 | sed 's/$/,\"" + kCells + "\"/; 1s/^/a,b\\n/'", "--from csv --infer"},
};

INSTANTIATE_TEST_SUITE_P(All, MemoryTest, testing::ValuesIn(kMillions), TestSupport::kRowName);

} // namespace
