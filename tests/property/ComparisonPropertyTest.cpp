#include <tests/support/SeededTest.h>
#include <tests/support/ValueGenerator.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;
using TestSupport::AnyBytes;
using TestSupport::BothSeeds;
using TestSupport::RandomSource;
using TestSupport::Record;
using TestSupport::SeedName;
using TestSupport::Value;
using TestSupport::ValueGenerator;
using Messages = std::vector<std::string>;

constexpr int kComparisons = 300;

/// What a comparison answers, and what it says.
struct Verdict {
    bool same = false;
    Messages messages;

    bool operator==(const Verdict&) const = default;
};

Verdict Compare(const Value& pattern, const Value& candidate) {
    Verdict verdict;
    verdict.same = pattern->IsSameStructure(candidate, &verdict.messages);
    return verdict;
}

const Verdict kSame{true, {}};

class ComparisonPropertyTest : public TestSupport::SeededTest {
  protected:
    /// The value with something changed that makes it another shape.
    Value Altered(const Value& value) {
        if (const auto structure = std::dynamic_pointer_cast<MetaStruct>(value)) {
            return AlteredStructure(structure);
        }
        if (const auto list = std::dynamic_pointer_cast<MetaList>(value)) {
            return AlteredList(*list);
        }
        return OfAnotherKind(value);
    }

    ValueGenerator values_{Random(), AnyBytes(), AnyBytes()};

  private:
    Value OfAnotherKind(const Value& value) {
        Value other = values_.Any();
        while (other->GetType() == value->GetType()) {
            other = values_.Any();
        }
        return other;
    }

    Record AlteredStructure(const Record& structure) {
        const auto altered = MetaStruct::New(structure->GetTypeName());
        const auto names = structure->GetFieldNames();
        const std::size_t touched = Random().Below(names.size() + 1);
        const bool leavesOut = Random().Chance(30);
        for (std::size_t i = 0; i < names.size(); ++i) {
            const Value field = structure->GetField(names[i]);
            if (i != touched) {
                altered->SetField(names[i], field);
            } else if (!leavesOut) {
                altered->SetField(names[i], Altered(field));
            }
        }
        if (touched == names.size()) {
            altered->SetField("one more than there was", 1);
        }
        return altered;
    }

    Value AlteredList(const MetaList& list) {
        if (list.GetListType() == MetaType::Int) {
            return MetaList::New(Random().Chance(50) ? MetaType::Bool : MetaType::String);
        }
        if (!list.GetListStructure()) {
            return MetaList::New(MetaType::Int);
        }
        return MetaList::New(MetaType::Struct, AlteredStructure(list.GetListStructure()));
    }
};

TEST_P(ComparisonPropertyTest, EveryValueHasItsOwnShape) {
    for (int round = 0; round < kComparisons; ++round) {
        const Value value = values_.Any();
        ASSERT_EQ(Compare(value, value), kSame) << value->ToString();
    }
}

TEST_P(ComparisonPropertyTest, ContentsDoNotMatter) {
    for (int round = 0; round < kComparisons; ++round) {
        const Value value = values_.Any();
        const Value other = values_.Like(value);
        ASSERT_EQ(Compare(value, other), kSame) << value->ToString() << "\n" << other->ToString();
        ASSERT_EQ(Compare(other, value), kSame) << value->ToString() << "\n" << other->ToString();
    }
}

TEST_P(ComparisonPropertyTest, AStructureBuiltFromADefinitionMatchesIt) {
    for (int round = 0; round < kComparisons; ++round) {
        const Record definition = values_.Structure();
        const Record built = values_.BuiltFrom(definition);
        ASSERT_EQ(Compare(definition, built), kSame) << definition->ToString();
        ASSERT_TRUE(built->MatchesStructureDefinition()) << definition->ToString();
    }
}

TEST_P(ComparisonPropertyTest, AnAlteredShapeIsRefusedFromEitherSide) {
    for (int round = 0; round < kComparisons; ++round) {
        const Value value = values_.Any();
        const Value altered = Altered(value);
        ASSERT_FALSE(Compare(value, altered).same) << value->ToString();
        ASSERT_FALSE(Compare(altered, value).same) << value->ToString();
    }
}

TEST_P(ComparisonPropertyTest, MessagesChangeNothingAndNoRefusalIsSilent) {
    for (int round = 0; round < kComparisons; ++round) {
        const Value value = values_.Any();
        const Value other = Random().Chance(50) ? values_.Any() : Altered(value);
        const Verdict verdict = Compare(value, other);
        ASSERT_EQ(value->IsSameStructure(other, nullptr), verdict.same) << value->ToString();
        ASSERT_TRUE(verdict.same || !verdict.messages.empty()) << value->ToString();
    }
}

TEST_P(ComparisonPropertyTest, BothSidesGiveOneVerdict) {
    for (int round = 0; round < kComparisons; ++round) {
        const Value value = values_.Any();
        const Value other = values_.Any();
        ASSERT_EQ(Compare(value, other).same, Compare(other, value).same)
            << value->ToString() << "\n"
            << other->ToString();
    }
}

TEST_P(ComparisonPropertyTest, AListTakesWhatHasTheShapeOfItsTemplateAndNothingElse) {
    for (int round = 0; round < kComparisons; ++round) {
        const Record pattern = values_.Structure();
        const auto list = MetaList::New(MetaType::Struct, pattern);
        Messages messages;
        ASSERT_TRUE(list->Validate(values_.Like(pattern), &messages)) << pattern->ToString();
        ASSERT_EQ(messages, Messages());
        ASSERT_FALSE(list->Validate(Altered(pattern), &messages)) << pattern->ToString();
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ComparisonPropertyTest, BothSeeds(), SeedName);

} // namespace
