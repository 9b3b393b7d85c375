#pragma once

#include <CppTools/metaobj/MetaObject.h>

namespace CppTools::MetaObj {

class MetaBool;
class MetaInt;
class MetaString;
class MetaStruct;

/// An ordered sequence of values of one kind: integers, booleans, strings or structures. A list
/// of lists does not exist. A list of structures has a template, which every element matched at
/// the time it was added and which is locked from then on.
class CPPTOOLS_EXPORT MetaList final : public MetaObject {
  public:
    /// Throws "Integer, boolean or string type expected for list." for `Struct` and `List`.
    MetaList(MetaType type, FactoryFlag flag);

    /// Throws "Struct type expected for list." unless `type` is `Struct`. Locks `structure`,
    /// which may be empty; no element can then be added.
    MetaList(MetaType type, std::shared_ptr<MetaStruct>&& structure, FactoryFlag flag);

    /// A list of scalars; throws as the first constructor does.
    static std::shared_ptr<MetaList> New(MetaType type);

    /// A list of structures; throws as the second constructor does. A value that is not a
    /// structure counts as an empty template.
    static std::shared_ptr<MetaList> New(MetaType type,
                                         const std::shared_ptr<MetaObject>& structure);
    static std::shared_ptr<MetaList> New(MetaType type, std::shared_ptr<MetaStruct>&& structure);
    static std::shared_ptr<MetaList> New(MetaType type,
                                         const std::shared_ptr<MetaStruct>& structure);

    /// The kind of all elements.
    MetaType GetListType() const { return listType_; }

    /// The template of a list of structures, otherwise empty.
    const std::shared_ptr<MetaStruct>& GetListStructure() const { return listStructure_; }

    /// The elements in insertion order; valid until the list changes.
    const std::vector<std::shared_ptr<MetaObject>>& GetObjects() const { return objects_; }

    /// The number of elements.
    unsigned int GetCount() const { return static_cast<unsigned int>(objects_.size()); }

    /// The stored element, valid until the list changes. `index` must be below the count.
    const std::shared_ptr<MetaObject>& operator[](unsigned int index) const {
        return objects_[index];
    }

    /// Throws "Get requested on invalid index of MetaList" unless `index` is below the count.
    std::shared_ptr<MetaObject> GetItem(unsigned int index) const;

    /// Removes one element; the order of the others stays. Linear in what follows it. Throws
    /// "Delete requested on invalid index of MetaList" unless `index` is below the count.
    void Delete(unsigned int index);

    /// Makes room for `count` elements in total.
    void Reserve(std::size_t count);

    /// Makes room for `count` elements more than there are. Room grows by at least half, so that
    /// many small steps cost as much as one large one.
    void EnsureCapacity(std::size_t count);

    /// Appends `item`; the list is unchanged when that throws:
    /// - "Null object passed to Add";
    /// - "Invalid type specificed in MetaList.  Expected object of type K got object of type L";
    /// - "Invalid structure detected by MetaList::Add.  Type Errors were: (N) : " and the
    ///   messages of `Validate`, each followed by ", ".
    void Add(const std::shared_ptr<MetaObject>& item);
    void Add(const std::shared_ptr<MetaBool>& item);
    void Add(bool value);
    void Add(const std::shared_ptr<MetaInt>& item);
    void Add(long value);
    void Add(int value);
    void Add(const std::shared_ptr<MetaString>& item);
    void Add(const char* text);
    void Add(std::string&& text);
    void Add(const std::string& text);
    void Add(const std::shared_ptr<MetaStruct>& item);

    /// Adds each value in order. Stops at the first that `Add` refuses; those before it stay.
    void AddAll(const std::vector<bool>& values);
    void AddAll(const std::vector<long>& values);
    void AddAll(const std::vector<std::string>& values);
    void AddAll(std::vector<std::string>&& values);

    /// Whether `item` may be added. The reasons go to `errors`, unless that is null.
    bool Validate(const std::shared_ptr<MetaObject>& item, std::vector<std::string>* errors) const;

    /// Compares element kinds and templates, never the elements. A missing template on either
    /// side fits any other.
    bool IsSameStructure(const std::shared_ptr<MetaObject>& other,
                         std::vector<std::string>* errors) const override;

    /// The elements joined by ", "; empty for an empty list.
    std::string ToString() const override;

  private:
    MetaType listType_;
    std::shared_ptr<MetaStruct> listStructure_;
    std::vector<std::shared_ptr<MetaObject>> objects_;
};

} // namespace CppTools::MetaObj
