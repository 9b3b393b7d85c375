#include <CppTools/metaobj/CppToolException.h>
#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/Mismatch.h>
#include <CppTools/metaobj/PlainText.h>
#include <CppTools/metaobj/StructFields.h>
#include <CppTools/metaobj/ValueCast.h>

#include <algorithm>

namespace CppTools::MetaObj {

namespace {

std::string JoinRefusals(const std::vector<std::string>& errors) {
    std::string text = "Invalid structure detected by MetaList::Add.  Type Errors were: (" +
                       std::to_string(errors.size()) + ") : ";
    for (const auto& error : errors) {
        text += error;
        text += ", ";
    }
    return text;
}

} // namespace

MetaList::MetaList(MetaType type, FactoryFlag flag)
    : MetaObject(MetaType::List, flag), listType_(type) {
    if (type == MetaType::Struct || type == MetaType::List) {
        throw CppToolException("Integer, boolean or string type expected for list.");
    }
}

MetaList::MetaList(MetaType type, std::shared_ptr<MetaStruct>&& structure, FactoryFlag flag)
    : MetaObject(MetaType::List, flag), listType_(type), listStructure_(std::move(structure)) {
    if (type != MetaType::Struct) {
        throw CppToolException("Struct type expected for list.");
    }
    if (listStructure_) {
        listStructure_->LockStructure();
        StructFields::Publish(*listStructure_);
    }
}

std::shared_ptr<MetaList> MetaList::New(MetaType type) {
    return std::make_shared<MetaList>(type, FactoryFlag{});
}

std::shared_ptr<MetaList> MetaList::New(MetaType type,
                                        const std::shared_ptr<MetaObject>& structure) {
    return New(type, std::dynamic_pointer_cast<MetaStruct>(structure));
}

std::shared_ptr<MetaList> MetaList::New(MetaType type, std::shared_ptr<MetaStruct>&& structure) {
    return std::make_shared<MetaList>(type, std::move(structure), FactoryFlag{});
}

std::shared_ptr<MetaList> MetaList::New(MetaType type,
                                        const std::shared_ptr<MetaStruct>& structure) {
    return New(type, std::shared_ptr<MetaStruct>(structure));
}

std::shared_ptr<MetaObject> MetaList::GetItem(unsigned int index) const {
    if (index >= objects_.size()) {
        throw CppToolException("Get requested on invalid index of MetaList");
    }
    return objects_[index];
}

void MetaList::Delete(unsigned int index) {
    if (index >= objects_.size()) {
        throw CppToolException("Delete requested on invalid index of MetaList");
    }
    objects_.erase(objects_.begin() + index);
}

void MetaList::Reserve(std::size_t count) {
    objects_.reserve(count);
}

void MetaList::EnsureCapacity(std::size_t count) {
    const std::size_t needed = objects_.size() + count;
    if (objects_.capacity() < needed) {
        objects_.reserve(std::max(needed, objects_.capacity() + objects_.capacity() / 2));
    }
}

void MetaList::Add(const std::shared_ptr<MetaObject>& item) {
    if (!item) {
        throw CppToolException("Null object passed to Add");
    }
    if (item->GetType() != listType_) {
        throw CppToolException("Invalid type specificed in MetaList.  Expected object of type " +
                               MetaTypeString(listType_) + " got object of type " +
                               MetaTypeString(item->GetType()));
    }
    std::vector<std::string> errors;
    if (!Validate(item, &errors)) {
        throw CppToolException(JoinRefusals(errors));
    }
    objects_.push_back(item);
    StructFields::Publish(*item);
}

void MetaList::Add(const std::shared_ptr<MetaBool>& item) {
    Add(std::shared_ptr<MetaObject>(item));
}

void MetaList::Add(bool value) {
    Add(MetaBool::New(value));
}

void MetaList::Add(const std::shared_ptr<MetaInt>& item) {
    Add(std::shared_ptr<MetaObject>(item));
}

void MetaList::Add(long value) {
    Add(MetaInt::New(value));
}

void MetaList::Add(int value) {
    Add(MetaInt::New(value));
}

void MetaList::Add(const std::shared_ptr<MetaString>& item) {
    Add(std::shared_ptr<MetaObject>(item));
}

void MetaList::Add(const char* text) {
    Add(MetaString::New(text));
}

void MetaList::Add(std::string&& text) {
    Add(MetaString::New(std::move(text)));
}

void MetaList::Add(const std::string& text) {
    Add(MetaString::New(text));
}

void MetaList::Add(const std::shared_ptr<MetaStruct>& item) {
    Add(std::shared_ptr<MetaObject>(item));
}

void MetaList::AddAll(const std::vector<bool>& values) {
    EnsureCapacity(values.size());
    for (const bool value : values) {
        Add(value);
    }
}

void MetaList::AddAll(const std::vector<long>& values) {
    EnsureCapacity(values.size());
    for (const long value : values) {
        Add(value);
    }
}

void MetaList::AddAll(const std::vector<std::string>& values) {
    EnsureCapacity(values.size());
    for (const auto& value : values) {
        Add(value);
    }
}

void MetaList::AddAll(std::vector<std::string>&& values) {
    EnsureCapacity(values.size());
    for (auto& value : values) {
        Add(std::move(value));
    }
}

bool MetaList::Validate(const std::shared_ptr<MetaObject>& item,
                        std::vector<std::string>* errors) const {
    if (!item) {
        ReportMismatch(errors, "Invalid NULL input");
        return false;
    }
    if (item->GetType() != listType_) {
        ReportMismatch(errors,
                       "There was an error adding an item to this list.  The item being added was "
                       "not the correct type for this list, so it was not added.");
        return false;
    }
    if (listType_ != MetaType::Struct) {
        return true;
    }
    if (!listStructure_) {
        ReportMismatch(errors,
                       "List created with NULL structure.  No items can be added to this list.");
        return false;
    }
    if (!listStructure_->IsSameStructure(item, errors)) {
        ReportMismatch(errors,
                       "There was an error adding an item to this list.  The item being added did "
                       "not match the declared structure of this list, so it was not added.");
        return false;
    }
    return true;
}

bool MetaList::IsSameStructure(const std::shared_ptr<MetaObject>& other,
                               std::vector<std::string>* errors) const {
    if (!other) {
        ReportMismatch(errors, "Mismatch on structure, NULL comparison");
        return false;
    }
    if (other->GetType() != MetaType::List) {
        ReportMismatch(errors, "Type mismatch!  Was expecting a " + MetaTypeString(GetType()) +
                                   ", but got a " + MetaTypeString(other->GetType()));
        return false;
    }
    const auto* list = ValueAs<MetaList>(*other);
    if (list == nullptr || list->listType_ != listType_) {
        ReportMismatch(errors, "Mismatch on list type");
        return false;
    }
    if (!listStructure_ || !list->listStructure_ ||
        listStructure_->IsSameStructure(list->listStructure_, errors)) {
        return true;
    }
    ReportMismatch(errors, "List type mismatch list and input");
    return false;
}

std::string MetaList::ToString() const {
    std::string text;
    text.reserve(objects_.size() * PlainTextWriter::kRoomPerItem);
    PlainTextWriter(text).AppendList(*this);
    return text;
}

} // namespace CppTools::MetaObj
