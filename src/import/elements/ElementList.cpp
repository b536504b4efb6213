#include "elements/ElementList.h"

namespace vlm {

void InitDataStructure(data::MemoryRecordset& data) {
    for (const ElementColumnFacts& column : kElementColumns) {
        data.AppendColumn(column.name, column.type, column.nullable);
    }
}

ElementListPtr NewElementList() {
    auto elements = std::make_unique<ElementList>();
    InitDataStructure(*elements);
    elements->Open();
    return elements;
}

}  // namespace vlm
