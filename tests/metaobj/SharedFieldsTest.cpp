#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

// Rows of one type share the list of their fields. Nothing of that may be seen.

namespace {

using CppTools::MetaObj::MetaInt;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;

using Fields = std::vector<std::pair<std::string, long>>;

std::shared_ptr<MetaStruct> NewRow(const Fields& fields) {
    auto row = MetaStruct::New("SharedRow");
    for (const auto& [name, value] : fields) {
        row->SetField(name, value);
    }
    return row;
}

/// The texts of structures that become rows of one list each, the one after the other.
std::vector<std::string> TextsOfRows(const std::vector<Fields>& rows) {
    std::vector<std::shared_ptr<MetaStruct>> kept;
    std::vector<std::string> texts;
    for (const auto& fields : rows) {
        kept.push_back(NewRow(fields));
        MetaList::New(MetaType::Struct, kept.back())->Add(kept.back());
    }
    for (const auto& row : kept) {
        texts.push_back(row->ToString());
    }
    return texts;
}

TEST(SharedFieldsTest, RowsWithFewerOrOtherFieldsHaveTheirOwn) {
    EXPECT_EQ(
        TextsOfRows({{{"a", 1}, {"b", 2}, {"c", 3}},
                     {{"a", 4}},
                     {{"c", 5}, {"a", 6}},
                     {{"d", 7}, {"b", 8}},
                     {},
                     {{"a", 9}, {"b", 10}, {"c", 11}, {"d", 12}}}),
        (std::vector<std::string>{"{'a' => '1', 'b' => '2', 'c' => '3', }", "{'a' => '4', }",
                                  "{'a' => '6', 'c' => '5', }", "{'b' => '8', 'd' => '7', }", "{}",
                                  "{'a' => '9', 'b' => '10', 'c' => '11', 'd' => '12', }"}));
}

TEST(SharedFieldsTest, FieldThatOnlyTheRowBeforeHasIsNotThere) {
    const auto first = NewRow({{"a", 1}, {"b", 2}});
    const auto list = MetaList::New(MetaType::Struct, first);
    const auto second = NewRow({{"b", 3}});
    EXPECT_FALSE(second->HasField("a"));
    EXPECT_EQ(second->GetField("a"), nullptr);
    EXPECT_EQ(second->GetFieldNames(), std::vector<std::string>{"b"});
    std::vector<std::string> errors;
    EXPECT_FALSE(list->Validate(second, &errors));
    EXPECT_EQ(errors, (std::vector<std::string>{
                          "Mismatch on number of fields set in struct. Expected 2 found 1",
                          "Missing field in input: a",
                          "There was an error adding an item to this list.  The item being added "
                          "did not match the declared structure of this list, so it was not "
                          "added."}));
}

TEST(SharedFieldsTest, ChangingARowChangesNoOther) {
    const auto first = NewRow({{"a", 1}});
    const auto list = MetaList::New(MetaType::Struct, NewRow({{"a", 0}}));
    list->Add(first);
    const auto second = NewRow({{"a", 2}});
    list->Add(second);
    first->SetField("z", 3);
    second->RemoveField("a");
    second->SetField("y", MetaInt::New(4), "documented");
    EXPECT_EQ(first->ToString(), "{'a' => '1', 'z' => '3', }");
    EXPECT_EQ(second->ToString(), "{'y' => '4', }");
    EXPECT_EQ(list->GetListStructure()->ToString(), "{'a' => '0', }");
    EXPECT_EQ(NewRow({{"a", 5}})->GetFieldNames(), std::vector<std::string>{"a"});
}

TEST(SharedFieldsTest, DocumentationIsARowsOwn) {
    const auto documented = MetaStruct::New("SharedRow");
    documented->SetField("a", MetaInt::New(1), "the first letter");
    const auto list = MetaList::New(MetaType::Struct, documented);
    const std::string& text = documented->GetFieldDocumentation("a");
    const auto plain = NewRow({{"a", 2}});
    list->Add(plain);
    EXPECT_EQ(plain->GetFieldDocumentation("a"), "Documentation missing");
    const auto other = MetaStruct::New("SharedRow");
    other->SetField("a", MetaInt::New(3), "another text");
    EXPECT_EQ(other->GetFieldDocumentation("a"), "another text");
    EXPECT_EQ(text, "the first letter");
    EXPECT_EQ(&documented->GetFieldDocumentation("a"), &text);
}

TEST(SharedFieldsTest, References_StayValidWhenFieldsStopBeingShared) {
    auto row = NewRow({{"a", 1}});
    const auto nested = MetaStruct::New("Parent");
    nested->SetField("row", row);
    const std::string& typeName = row->GetTypeName();
    for (int i = 0; i < 100; ++i) {
        row->SetField("field" + std::to_string(i), i);
        nested->SetField("row", row);
    }
    EXPECT_EQ(typeName, "SharedRow");
    EXPECT_EQ(&row->GetTypeName(), &typeName);
}

TEST(SharedFieldsTest, Definition_IsOfTheRowsThatWereMadeFromIt) {
    const auto one = NewRow({{"a", 1}});
    const auto other = NewRow({{"a", 1}, {"b", 2}});
    const auto ofOne = MetaStruct::New(one);
    const auto ofOther = MetaStruct::New(other);
    ofOther->SetField("b", 3);
    MetaStruct::New("Parent")->SetField("row", ofOther);
    const auto nextOfOne = MetaStruct::New(one);
    EXPECT_EQ(nextOfOne->GetStructureDefinition(), one);
    EXPECT_EQ(MetaStruct::New(other)->GetStructureDefinition(), other);
    EXPECT_FALSE(NewRow({})->HasStructureDefinition());
}

TEST(SharedFieldsTest, NestedStructuresOfRowsAreTheirOwn) {
    std::vector<std::shared_ptr<MetaStruct>> rows;
    for (long i = 0; i < 3; ++i) {
        const auto inner = MetaStruct::New("Inner");
        rows.push_back(NewRow({{"n", i}}));
        rows.back()->SetField("inner", inner);
        inner->SetField("late", i * 100);
    }
    EXPECT_EQ(rows[0]->ToString(), "{'inner' => '{'late' => '0', }', 'n' => '0', }");
    EXPECT_EQ(rows[2]->ToString(), "{'inner' => '{'late' => '200', }', 'n' => '2', }");
}

std::shared_ptr<MetaList> ListOf(long count) {
    const auto list = MetaList::New(MetaType::Struct, NewRow({{"a", 0}, {"b", 0}}));
    for (long i = 0; i < count; ++i) {
        list->Add(NewRow({{"a", i}, {"b", i * 1000}}));
    }
    return list;
}

TEST(SharedFieldsTest, ThreadsBuildTheirOwnValuesAndHandThemOver) {
    std::vector<std::shared_ptr<MetaList>> lists(4);
    std::vector<std::thread> threads;
    for (auto& list : lists) {
        threads.emplace_back([&list] { list = ListOf(500); });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    for (const auto& list : lists) {
        EXPECT_EQ(list->ToString(), ListOf(500)->ToString());
        const auto last = std::dynamic_pointer_cast<MetaStruct>(list->GetItem(499));
        last->SetField("c", "added elsewhere");
        EXPECT_EQ(last->ToString(), "{'a' => '499', 'b' => '499000', 'c' => 'added elsewhere', }");
    }
}

/// Built and freed after the thread's own stores are gone.
struct BuildsAtThreadEnd {
    ~BuildsAtThreadEnd() { *text = ListOf(3)->ToString(); }

    std::string* text = nullptr;
};

TEST(SharedFieldsTest, ValuesCanBeBuiltWhileTheirThreadEnds) {
    std::string text;
    std::thread([&text] {
        static thread_local BuildsAtThreadEnd builder;
        builder.text = &text;
        ListOf(1); // so that the library's stores are made later, and are gone earlier
    }).join();
    EXPECT_EQ(text, ListOf(3)->ToString());
}

} // namespace
