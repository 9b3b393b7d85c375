#pragma once

#include <tests/support/TextGenerator.h>
#include <tests/support/Values.h>

#include <bit>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace TestSupport {

/// Makes value trees: all kinds, lists and structures within each other, empty ones among them.
class ValueGenerator {
  public:
    ValueGenerator(RandomSource& random, const Alphabet& texts, const Alphabet& fieldNames)
        : random_(&random), texts_(random, texts), fieldNames_(random, fieldNames) {}

    /// A value of any kind, more often one that holds others.
    Value Any() { return random_->Chance(80) ? Compound(kDepth) : Scalar(); }

    Record Structure() { return StructureOf(kDepth); }

    std::vector<Value> Several(std::size_t count) {
        std::vector<Value> values;
        for (; count > 0; --count) {
            values.push_back(Any());
        }
        return values;
    }

    /// A value of the same shape with contents of its own.
    Value Like(const Value& pattern) {
        using CppTools::MetaObj::MetaType;
        switch (pattern->GetType()) {
        case MetaType::Struct:
            return LikeStructure(std::dynamic_pointer_cast<CppTools::MetaObj::MetaStruct>(pattern));
        case MetaType::List:
            return LikeList(std::dynamic_pointer_cast<CppTools::MetaObj::MetaList>(pattern));
        default:
            return ScalarOf(pattern->GetType());
        }
    }

    /// A structure with every field of its definition.
    Record BuiltFrom(const Record& definition) {
        return Filled(CppTools::MetaObj::MetaStruct::New(definition), definition);
    }

    Value Scalar() {
        using CppTools::MetaObj::MetaType;
        return ScalarOf(
            random_->Pick(std::vector{MetaType::Int, MetaType::Bool, MetaType::String}));
    }

    std::string FieldName() {
        static const std::vector<std::string> usual = {"a", "b", "Name", "Size", "Device Name"};
        return random_->Chance(40) ? random_->Pick(usual) : fieldNames_.Text();
    }

  private:
    using List = std::shared_ptr<CppTools::MetaObj::MetaList>;

    static constexpr int kDepth = 4;

    Value Tree(int depth) { return depth > 0 && random_->Chance(40) ? Compound(depth) : Scalar(); }

    Value Compound(int depth) {
        if (random_->Chance(50)) {
            return StructureOf(depth);
        }
        return ListOf(depth);
    }

    Record StructureOf(int depth) {
        const auto structure = CppTools::MetaObj::MetaStruct::New(TypeName());
        for (std::size_t count = random_->Below(6); count > 0; --count) {
            structure->SetField(FieldName(), Tree(depth - 1));
        }
        return structure;
    }

    List ListOf(int depth) {
        using CppTools::MetaObj::MetaType;
        if (random_->Chance(50)) {
            return Filled(CppTools::MetaObj::MetaList::New(Scalar()->GetType()));
        }
        return RowsLike(random_->Chance(5) ? nullptr : StructureOf(depth - 1));
    }

    List RowsLike(const Record& pattern) {
        const auto list = Rows(pattern, {});
        for (std::size_t count = pattern ? random_->Below(5) : 0; count > 0; --count) {
            list->Add(random_->Chance(50) ? BuiltFrom(pattern) : LikeStructure(pattern));
        }
        return list;
    }

    List Filled(const List& list) {
        for (std::size_t count = random_->Below(5); count > 0; --count) {
            list->Add(ScalarOf(list->GetListType()));
        }
        return list;
    }

    Record Filled(const Record& structure, const Record& pattern) {
        for (const std::string& name : pattern->GetFieldNames()) {
            structure->SetField(name, Like(pattern->GetField(name)));
        }
        return structure;
    }

    Record LikeStructure(const Record& pattern) {
        return Filled(CppTools::MetaObj::MetaStruct::New(pattern->GetTypeName()), pattern);
    }

    List LikeList(const List& pattern) {
        if (pattern->GetListType() == CppTools::MetaObj::MetaType::Struct) {
            return RowsLike(pattern->GetListStructure());
        }
        return Filled(CppTools::MetaObj::MetaList::New(pattern->GetListType()));
    }

    Value ScalarOf(CppTools::MetaObj::MetaType type) {
        using CppTools::MetaObj::MetaType;
        switch (type) {
        case MetaType::Bool:
            return Bool(random_->Chance(50));
        case MetaType::Int:
            return Int(Integer());
        default:
            return Text(texts_.Text());
        }
    }

    long Integer() {
        static const std::vector<long> edges = {
            std::numeric_limits<long>::min(), std::numeric_limits<long>::max(), -2, -1, 0, 20, 21};
        return random_->Chance(50) ? random_->Pick(edges) : std::bit_cast<long>(random_->Bits());
    }

    std::string TypeName() {
        static const std::vector<std::string> names = {"T", "Disk2", "0", "aVeryLongTypeName"};
        return random_->Pick(names);
    }

    RandomSource* random_;
    TextGenerator texts_;
    TextGenerator fieldNames_;
};

} // namespace TestSupport
