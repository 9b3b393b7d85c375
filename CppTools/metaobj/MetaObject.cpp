#include <CppTools/metaobj/MetaObject.h>

#include <ostream>

namespace CppTools::MetaObj {

bool MetaObject::IsSameStructure(const std::shared_ptr<MetaObject>& other,
                                 std::vector<std::string>* errors) const {
    const bool isScalar =
        type_ == MetaType::Int || type_ == MetaType::Bool || type_ == MetaType::String;
    if (isScalar && other->GetType() == type_) {
        return true;
    }
    if (errors != nullptr) {
        errors->push_back("Type mismatch in structure.  Expecting " + MetaTypeString(type_) +
                          " got " + MetaTypeString(other->GetType()));
    }
    return false;
}

std::ostream& operator<<(std::ostream& out, const MetaObject& object) {
    return out << object.ToString();
}

} // namespace CppTools::MetaObj
