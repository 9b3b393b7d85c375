#include <CppTools/autocli/formatters/JsonFormatter.h>

#include <tests/support/Rendering.h>
#include <tests/support/SeededTest.h>
#include <tests/support/ValueGenerator.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <memory>
#include <string>

namespace {

using CppTools::AutoCli::JsonFormatter;
using TestSupport::AnyAscii;
using TestSupport::BothSeeds;
using TestSupport::RenderWith;
using TestSupport::SeedName;
using TestSupport::Value;
using TestSupport::ValueGenerator;
using TestSupport::Without;

/// The tree as the other library holds it.
nlohmann::json JsonOf(const Value& value) {
    using namespace CppTools::MetaObj;
    if (const auto number = std::dynamic_pointer_cast<MetaInt>(value)) {
        return number->GetValue();
    }
    if (const auto truth = std::dynamic_pointer_cast<MetaBool>(value)) {
        return truth->GetValue();
    }
    if (const auto text = std::dynamic_pointer_cast<MetaString>(value)) {
        return text->GetValue();
    }
    if (const auto list = std::dynamic_pointer_cast<MetaList>(value)) {
        auto array = nlohmann::json::array();
        for (const auto& element : list->GetObjects()) {
            array.push_back(JsonOf(element));
        }
        return array;
    }
    auto object = nlohmann::json::object();
    const auto structure = std::dynamic_pointer_cast<MetaStruct>(value);
    for (const std::string& name : structure->GetFieldNames()) {
        object[name] = JsonOf(structure->GetField(name));
    }
    return object;
}

class JsonFormatterPropertyTest : public TestSupport::SeededTest {};

TEST_P(JsonFormatterPropertyTest, OutputOfAsciiTreesParsesToTheTree) {
    // Names are written as they are, so they may hold nothing that has to be escaped.
    const auto names = Without(AnyAscii(), TestSupport::AsciiBetween(0x00, 0x1F) + "\"\\");
    ValueGenerator values(Random(), AnyAscii(), names);
    for (int round = 0; round < 400; ++round) {
        const Value value = values.Any();
        const std::string text = RenderWith<JsonFormatter>(value).second;
        ASSERT_EQ(nlohmann::json::parse(text, nullptr, false), JsonOf(value)) << text;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, JsonFormatterPropertyTest, BothSeeds(), SeedName);

} // namespace
