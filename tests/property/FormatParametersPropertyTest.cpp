#include <CppTools/autocli/formatters/FormatParameters.h>

#include <tests/support/SeededTest.h>
#include <tests/support/TextGenerator.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

using CppTools::AutoCli::FormatParameters;
using TestSupport::AnyBytes;
using TestSupport::BothSeeds;
using TestSupport::SeedName;
using TestSupport::TextGenerator;

constexpr int kParameterRounds = 500;

/// All that a bag of parameters holds.
using Contents = std::pair<std::string, std::map<std::string, std::string>>;

Contents ContentsOf(const FormatParameters& params) {
    return {params.GetFormatter(), params.GetParameters()};
}

/// The first with the second laid over it.
FormatParameters Overridden(FormatParameters below, FormatParameters above) {
    below.OverrideValues(above);
    return below;
}

class FormatParametersPropertyTest : public TestSupport::SeededTest {
  protected:
    FormatParameters Params() {
        FormatParameters params;
        params.SetFormatter(Random().Chance(50) ? "" : texts_.Text());
        for (std::size_t count = Random().Below(6); count > 0; --count) {
            params.SetParameter(Key(), texts_.Text());
        }
        return params;
    }

    std::string Key() {
        static const std::vector<std::string> usual = {"fields", "fields:T", "units:T.a", "", "x"};
        return Random().Chance(70) ? Random().Pick(usual) : texts_.Text();
    }

    TextGenerator texts_{Random(), AnyBytes()};
};

TEST_P(FormatParametersPropertyTest, OverrideValues_NothingOverAnythingChangesNothing) {
    for (int round = 0; round < kParameterRounds; ++round) {
        const FormatParameters params = Params();
        ASSERT_EQ(ContentsOf(Overridden(params, {})), ContentsOf(params));
        ASSERT_EQ(ContentsOf(Overridden({}, params)), ContentsOf(params));
    }
}

TEST_P(FormatParametersPropertyTest, OverrideValues_ASecondTimeChangesNothing) {
    for (int round = 0; round < kParameterRounds; ++round) {
        const FormatParameters above = Params();
        const FormatParameters once = Overridden(Params(), above);
        ASSERT_EQ(ContentsOf(Overridden(once, above)), ContentsOf(once));
    }
}

TEST_P(FormatParametersPropertyTest, OverrideValues_GroupingDoesNotMatter) {
    for (int round = 0; round < kParameterRounds; ++round) {
        const FormatParameters first = Params();
        const FormatParameters second = Params();
        const FormatParameters third = Params();
        ASSERT_EQ(ContentsOf(Overridden(Overridden(first, second), third)),
                  ContentsOf(Overridden(first, Overridden(second, third))));
    }
}

TEST_P(FormatParametersPropertyTest, OverrideValues_EveryEntryComesFromTheUppermostThatHasIt) {
    for (int round = 0; round < kParameterRounds; ++round) {
        const FormatParameters below = Params();
        const FormatParameters above = Params();
        std::map<std::string, std::string> entries = above.GetParameters();
        entries.insert(below.GetParameters().begin(), below.GetParameters().end());
        const std::string formatter =
            above.GetFormatter().empty() ? below.GetFormatter() : above.GetFormatter();
        ASSERT_EQ(ContentsOf(Overridden(below, above)), Contents(formatter, entries));
    }
}

TEST_P(FormatParametersPropertyTest, OverrideValues_LeavesTheUpperAsItWas) {
    for (int round = 0; round < kParameterRounds; ++round) {
        FormatParameters above = Params();
        const Contents before = ContentsOf(above);
        Params().OverrideValues(above);
        ASSERT_EQ(ContentsOf(above), before);
    }
}

TEST_P(FormatParametersPropertyTest, OverrideValues_WithItselfChangesNothing) {
    for (int round = 0; round < kParameterRounds; ++round) {
        FormatParameters params = Params();
        const Contents before = ContentsOf(params);
        params.OverrideValues(params);
        ASSERT_EQ(ContentsOf(params), before);
    }
}

TEST_P(FormatParametersPropertyTest, GetParameterAsList_GivesBackWhatWasJoinedByCommas) {
    TextGenerator items(Random(), Without(AnyBytes(), ","));
    for (int round = 0; round < kParameterRounds; ++round) {
        std::vector<std::string> list;
        std::string joined;
        for (std::size_t count = Random().Below(6); count > 0; --count) {
            list.push_back(items.Text());
            joined += (list.size() == 1 ? "" : ",") + list.back();
        }
        if (!list.empty() && list.back().empty()) {
            list.pop_back(); // an end without text is no item
        }
        FormatParameters params;
        params.SetParameter("list", joined);
        ASSERT_EQ(params.GetParameterAsList("list"), list);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, FormatParametersPropertyTest, BothSeeds(), SeedName);

} // namespace
