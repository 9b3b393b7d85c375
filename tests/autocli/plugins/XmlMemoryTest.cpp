#include <CppTools/autocli/plugins/XmlPlugin.h>
#include <CppTools/autocli/plugins/XmlUtil.h>
#include <CppTools/metaobj/MetaObject.h>

#include <gtest/gtest.h>
#include <tests/support/CommandDescriptor.h>
#include <tests/support/StreamCapture.h>
#include <tests/support/TempDirectory.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <libxml/parser.h>
#include <libxml/xmlmemory.h>
#include <memory>
#include <new>
#include <set>
#include <string>

namespace {

using CppTools::CppToolException;
using CppTools::AutoCli::XmlPlugin;
using CppTools::AutoCli::XmlUtil_ParseXmlOutput;

/// Lets one allocation of libxml2 fail, counted from 1, for as long as it lives.
class FailingXmlMemory {
  public:
    explicit FailingXmlMemory(int call) {
        callsLeft = call;
        xmlMemGet(&free_, &malloc_, &realloc_, &strdup_);
        xmlMemSetup(Free, Allocate, Reallocate, Duplicate);
    }

    FailingXmlMemory(const FailingXmlMemory&) = delete;
    FailingXmlMemory& operator=(const FailingXmlMemory&) = delete;

    ~FailingXmlMemory() {
        xmlResetLastError();
        xmlMemSetup(free_, malloc_, realloc_, strdup_);
    }

    static bool HasFailed() { return callsLeft <= 0; }

  private:
    static bool Fails() { return --callsLeft == 0; }

    /// What libxml2 loses when it runs out of memory is its own affair: it stays known here, to the
    /// end of the process and beyond the destructors of its statics.
    static std::set<void*>& Blocks() {
        alignas(std::set<void*>) static std::array<std::byte, sizeof(std::set<void*>)> place;
        static auto* const blocks = new (place.data()) std::set<void*>;
        return *blocks;
    }

    static void* Allocate(std::size_t size) {
        return Fails() ? nullptr : *Blocks().insert(std::malloc(size)).first;
    }

    static void* Reallocate(void* block, std::size_t size) {
        if (Fails()) {
            return nullptr;
        }
        Blocks().erase(block);
        return *Blocks().insert(std::realloc(block, size)).first;
    }

    static char* Duplicate(const char* text) {
        void* const copy = Allocate(std::strlen(text) + 1);
        return copy != nullptr ? std::strcpy(static_cast<char*>(copy), text) : nullptr;
    }

    static void Free(void* block) {
        Blocks().erase(block);
        std::free(block);
    }

    static inline int callsLeft = 0;
    xmlFreeFunc free_ = nullptr;
    xmlMallocFunc malloc_ = nullptr;
    xmlReallocFunc realloc_ = nullptr;
    xmlStrdupFunc strdup_ = nullptr;
};

constexpr const char* kRefused = "refused";

/// What `read` answers while each of libxml2's allocations fails in turn, refusals left out.
template <typename Read>
std::set<std::string> AnswersWithFailingMemory(Read read) {
    xmlInitParser();
    std::set<std::string> answers;
    bool hasFailed = true;
    for (int call = 1; hasFailed; ++call) {
        const FailingXmlMemory memory(call);
        try {
            answers.insert(read());
        } catch (const CppToolException&) {
            answers.insert(kRefused);
        } catch (const std::bad_alloc&) {
            answers.insert(kRefused);
        }
        hasFailed = FailingXmlMemory::HasFailed();
    }
    return answers;
}

/// The value of an output, whatever it says about it on standard error.
std::set<std::string> ValuesOf(const std::string& output) {
    std::set<std::string> values;
    TestSupport::PrintedBy([&] {
        values = AnswersWithFailingMemory([&] {
            const auto value = XmlUtil_ParseXmlOutput(output);
            return value ? value->ToString() : kRefused;
        });
    });
    return values;
}

TEST(XmlMemoryTest, PlainOutput_IsReadWholeOrRefused) {
    EXPECT_EQ(ValuesOf("<output><list type=\"string\"><string>a&amp;b</string>"
                       "<string><![CDATA[<c>]]></string></list></output>"),
              (std::set<std::string>{"a&b, <c>", kRefused}));
}

TEST(XmlMemoryTest, OutputReadAsATree_IsReadWholeOrRefused) {
    EXPECT_EQ(ValuesOf("<!DOCTYPE output [<!ENTITY e \"x\">]><output><list type=\"string\">"
                       "<string>a<!-- c --></string><string><![CDATA[<b>]]></string>"
                       "</list></output>"),
              (std::set<std::string>{" c , <b>", kRefused}));
}

TEST(XmlMemoryTest, DescriptorReadAsATree_IsReadWholeOrRefused) {
    const TestSupport::TempDirectory directory;
    const std::string path = directory.Write(
        "demo.xml", "<!DOCTYPE plugin>" + TestSupport::Descriptor(TestSupport::NamespacesElement(
                                              TestSupport::NamespaceElement("demo", "Words."))));
    std::set<std::string> answers;
    TestSupport::PrintedBy([&] {
        answers = AnswersWithFailingMemory([&] {
            XmlPlugin::New(path)->Initialize();
            return "read";
        });
    });
    EXPECT_EQ(answers, (std::set<std::string>{"read", kRefused}));
}

} // namespace
