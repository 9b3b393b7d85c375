#pragma once

/// The rows as the author of a plug-in would build them.

#include "Rows.h"

#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaStruct.h>

namespace Bench {

inline std::shared_ptr<CppTools::MetaObj::MetaStruct> NewRow(const PlainRow& row) {
    auto structure = CppTools::MetaObj::MetaStruct::New("Row");
    structure->SetField("Description", row.description);
    structure->SetField("Enabled", row.enabled);
    structure->SetField("Id", static_cast<long>(row.id));
    structure->SetField("Name", row.name);
    structure->SetField("Size", static_cast<long>(row.size));
    structure->SetField("State", row.state);
    return structure;
}

inline std::shared_ptr<CppTools::MetaObj::MetaList> NewRows(std::int64_t count) {
    PlainRow row{};
    FillRow(row, 0);
    auto rows = CppTools::MetaObj::MetaList::New(CppTools::MetaObj::MetaType::Struct, NewRow(row));
    for (std::int64_t i = 0; i < count; ++i) {
        FillRow(row, i);
        rows->Add(NewRow(row));
    }
    return rows;
}

} // namespace Bench
