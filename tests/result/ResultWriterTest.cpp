#include "Support.h"
#include "tests/support/Thrown.h"

#include <CppTools/autocli/plugins/XmlUtil.h>
#include <tandril-result/Descriptor.h>
#include <tandril-result/ResultWriter.h>

#include <gtest/gtest.h>
#include <memory>

using CppTools::AutoCli::XmlUtil_ParseXmlOutput;
using ResultTests::ErrorOf;
using TandrilResult::HeldOutput;
using TandrilResult::ResultShape;
using TandrilResult::ResultWriter;
using TandrilResult::WriteFailure;

namespace {

/// An output into a file without a name.
class ResultWriterTest : public testing::Test {
  protected:
    std::string Written() const {
        std::string text;
        std::rewind(file_.get());
        for (int c = std::fgetc(file_.get()); c != EOF; c = std::fgetc(file_.get())) {
            text.push_back(static_cast<char>(c));
        }
        return text;
    }

  private:
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_{std::tmpfile(), &std::fclose};

  protected:
    HeldOutput output_{fileno(file_.get())};
};

const std::string kDocumentHead = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<output>";

TEST_F(ResultWriterTest, List_HoldsWhatWasAdded) {
    ResultWriter writer(output_, ResultShape::List, "int");
    writer.Add("<int>1</int>\n");
    writer.Add("<int>2</int>\n");
    writer.Finish();
    EXPECT_EQ(Written(), kDocumentHead + "<list type=\"int\">\n<int>1</int>\n<int>2</int>\n"
                                         "</list></output>\n");
    EXPECT_EQ(XmlUtil_ParseXmlOutput(Written())->ToString(), "1, 2");
}

TEST_F(ResultWriterTest, List_MayBeEmpty) {
    ResultWriter(output_, ResultShape::List, "structure").Finish();
    EXPECT_EQ(Written(), kDocumentHead + "<list type=\"structure\">\n</list></output>\n");
    EXPECT_EQ(XmlUtil_ParseXmlOutput(Written())->ToString(), "");
}

TEST_F(ResultWriterTest, One_IsTheResultItself) {
    ResultWriter writer(output_, ResultShape::One, "int");
    writer.Add("<int>1</int>\n");
    writer.Finish();
    EXPECT_EQ(Written(), kDocumentHead + "<int>1</int>\n</output>\n");
}

TEST_F(ResultWriterTest, One_NeitherNoneNorSeveral) {
    ResultWriter writer(output_, ResultShape::One, "int");
    EXPECT_EQ(ErrorOf([&] { writer.Finish(); }), "input: there is no record, but --one needs one");
    writer.Add("<int>1</int>\n");
    EXPECT_EQ(ErrorOf([&] { writer.Add("<int>2</int>\n"); }),
              "input: it is one more than the one that --one allows");
    EXPECT_EQ(Written(), "");
}

TEST_F(ResultWriterTest, Failure_NothingPrintedYet_ErrorLineAlone) {
    ResultWriter writer(output_, ResultShape::List, "int");
    writer.Add("<int>1</int>\n");
    WriteFailure(output_, "line 2:\n\xFF");
    EXPECT_EQ(Written(), "ERROR:line 2:\\n\\xff\n");
}

TEST_F(ResultWriterTest, Failure_MuchPrinted_ReaderRefusesTheDocumentWithTheReason) {
    ResultWriter writer(output_, ResultShape::List, "int");
    const std::string element = "<int>1</int>\n";
    while (!output_.HasBegun()) {
        writer.Add(element);
    }
    writer.Add(element);
    WriteFailure(output_, "line <2>:\n\xFF");
    const std::string text = Written();
    EXPECT_TRUE(text.ends_with("\n" + element + element +
                               "<int>ERROR:line &lt;2&gt;:\\n\\xff</int>\n</list></output>\n"));
    EXPECT_EQ(TestSupport::ThrownBy([&] { XmlUtil_ParseXmlOutput(text); }),
              "Error parsing command output.  Unable to build a proper metaobject from output "
              "tag.  output must contain properly formatted tags of type bool, int, string, "
              "structure and list. Error was : Unable to read an int value from: "
              "'ERROR:line <2>:\\n\\xff'");
}

} // namespace
