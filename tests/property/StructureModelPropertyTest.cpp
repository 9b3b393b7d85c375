#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <tests/support/RandomSource.h>
#include <tests/support/SeededTest.h>
#include <tests/support/Thrown.h>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

using CppTools::MetaObj::MetaInt;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaObject;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;
using TestSupport::BothSeeds;
using TestSupport::RandomSource;
using TestSupport::SeedName;

/// A structure as it is specified to behave, written as plainly as can be.
struct StructureModel {
    struct Field {
        std::string text;
        MetaType type;
        std::string documentation;
        std::shared_ptr<MetaObject> handedOut; ///< What was asked for once, or set as an object.
    };

    std::map<std::string, Field> fields;
    std::optional<std::set<std::string>> allowed; ///< By its definition.
    bool isLocked = false;
};

/// A structure and its model, changed alike.
class Pair {
  public:
    explicit Pair(std::shared_ptr<MetaStruct> structure) : structure_(std::move(structure)) {}

    const std::shared_ptr<MetaStruct>& GetStructure() const { return structure_; }

    void AddToListOfItsOwn() {
        MetaList::New(MetaType::Struct, structure_)->Add(structure_);
        model_.isLocked = true;
    }

    /// Another that may have the fields of this.
    Pair Define() {
        Pair defined(MetaStruct::New(structure_));
        defined.model_.allowed.emplace();
        for (const auto& [name, field] : model_.fields) {
            defined.model_.allowed->insert(name);
        }
        model_.isLocked = true;
        return defined;
    }

    template <typename Value>
    void Set(const std::string& name, const Value& value, MetaType type, const std::string& text) {
        SetModel(name, {text, type, "", nullptr}, [&] { structure_->SetField(name, value); });
    }

    void SetObject(const std::string& name, const std::shared_ptr<MetaObject>& value,
                   const std::string& documentation) {
        SetModel(name, {value->ToString(), value->GetType(), documentation, value},
                 [&] { structure_->SetField(name, value, documentation); });
    }

    void Remove(const std::string& name) {
        if (model_.isLocked) {
            EXPECT_EQ(TestSupport::ThrownBy([&] { structure_->RemoveField(name); }),
                      "Structure is locked, unable to remove fields");
            return;
        }
        structure_->RemoveField(name);
        model_.fields.erase(name);
    }

    void AskFor(const std::string& name) {
        const auto found = model_.fields.find(name);
        const auto value = structure_->GetField(name);
        ASSERT_EQ(value != nullptr, found != model_.fields.end());
        if (value) {
            auto& field = found->second;
            ASSERT_TRUE(field.handedOut == nullptr || field.handedOut == value) << name;
            ASSERT_EQ(value->ToString(), field.text);
            ASSERT_EQ(value->GetType(), field.type);
            field.handedOut = value;
        }
    }

    void Check() const {
        std::vector<std::string> names;
        std::string text = "{";
        for (const auto& [name, field] : model_.fields) {
            names.push_back(name);
            text += "'" + name + "' => '" + field.text + "', ";
            ASSERT_TRUE(structure_->HasField(name));
            ASSERT_EQ(structure_->GetFieldType(name), field.type);
            ASSERT_EQ(structure_->GetFieldDocumentation(name),
                      field.documentation.empty() ? "Documentation missing" : field.documentation);
        }
        ASSERT_EQ(structure_->GetFieldNames(), names);
        ASSERT_EQ(structure_->ToString(), text + "}");
        ASSERT_EQ(structure_->GetTypeName(), typeName_);
        ASSERT_EQ(&structure_->GetTypeName(), address_);
    }

  private:
    template <typename Change>
    void SetModel(const std::string& name, StructureModel::Field field, Change change) {
        const std::string refusal = Refusal(name);
        ASSERT_EQ(TestSupport::ThrownBy(change), refusal);
        if (refusal == TestSupport::ThrownBy([] {})) {
            model_.fields[name] = std::move(field);
        }
    }

    /// What `SetField` throws.
    std::string Refusal(const std::string& name) const {
        const bool isNew = !model_.fields.contains(name);
        if (model_.isLocked && isNew) {
            return "Unable to set new field " + name + " on structure. Structure has been locked";
        }
        if (!model_.isLocked && model_.allowed && !model_.allowed->contains(name)) {
            return "Unable to set new field " + name +
                   " on structure.  The field does not match the Structure definition for this "
                   "MetaStruct.";
        }
        return TestSupport::ThrownBy([] {});
    }

    std::shared_ptr<MetaStruct> structure_;
    std::string typeName_ = structure_->GetTypeName();
    const std::string* address_ = &structure_->GetTypeName();
    StructureModel model_;
};

/// Several structures of few types that are built, changed, shared and left in any order.
class Crowd {
  public:
    explicit Crowd(RandomSource& random) : random_(random) {}

    void DoAnything() {
        if (pairs_.empty() || random_.Chance(8)) {
            pairs_.emplace_back(MetaStruct::New("T" + std::to_string(random_.Below(12))));
            return;
        }
        const std::size_t chosen = random_.Below(pairs_.size());
        Pair& pair = pairs_[chosen];
        const std::string name(1, static_cast<char>('a' + random_.Below(7)));
        switch (random_.Below(16)) {
        case 0:
        case 1:
            return pair.Remove(name);
        case 2:
        case 3:
            return pair.AskFor(name);
        case 4:
            return pair.SetObject(name, AnyNumber(), random_.Chance(50) ? "" : "about " + name);
        case 5:
            parents_.push_back(MetaStruct::New("Parent"));
            return parents_.back()->SetField("part", pair.GetStructure());
        case 6:
            return pair.AddToListOfItsOwn();
        case 7:
            pairs_.push_back(pair.Define());
            return;
        case 8:
            pairs_.erase(pairs_.begin() + static_cast<long>(chosen));
            return;
        default:
            return SetPlainly(pair, name);
        }
    }

    void Check() const {
        for (const auto& pair : pairs_) {
            pair.Check();
        }
    }

  private:
    std::shared_ptr<MetaObject> AnyNumber() {
        return MetaInt::New(static_cast<long>(random_.Below(99)));
    }

    void SetPlainly(Pair& pair, const std::string& name) {
        const auto number = static_cast<long>(random_.Below(100)) - 50;
        const std::string text(random_.Below(40), 'x');
        switch (random_.Below(3)) {
        case 0:
            return pair.Set(name, number, MetaType::Int, std::to_string(number));
        case 1:
            return pair.Set(name, number > 0, MetaType::Bool, number > 0 ? "true" : "false");
        default:
            return pair.Set(name, text, MetaType::String, text);
        }
    }

    RandomSource& random_;
    std::vector<Pair> pairs_;
    std::vector<std::shared_ptr<MetaStruct>> parents_;
};

class StructureModelPropertyTest : public TestSupport::SeededTest {};

TEST_P(StructureModelPropertyTest, StructuresBehaveLikeMapsWhateverTheyShare) {
    for (int round = 0; round < 60; ++round) {
        Crowd crowd(Random());
        for (int step = 0; step < 150; ++step) {
            crowd.DoAnything();
            crowd.Check();
            ASSERT_FALSE(HasFailure()) << "round " << round << ", step " << step;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, StructureModelPropertyTest, BothSeeds(), SeedName);

} // namespace
