#include "ado/AdoTypes.h"

namespace vlm::data::ado {

FieldType FieldTypeOf(std::int32_t adoType) {
    switch (adoType) {
        case 11:  // adBoolean
            return FieldType::Boolean;
        case 2:   // adSmallInt
        case 16:  // adTinyInt
        case 17:  // adUnsignedTinyInt
            return FieldType::SmallInt;
        case 3:   // adInteger
        case 18:  // adUnsignedSmallInt
            return FieldType::Integer;
        case 19:  // adUnsignedInt
        case 20:  // adBigInt
        case 21:  // adUnsignedBigInt
            return FieldType::BigInt;
        case 4:  // adSingle
        case 5:  // adDouble
            return FieldType::Double;
        case 6:    // adCurrency
        case 14:   // adDecimal
        case 131:  // adNumeric
        case 139:  // adVarNumeric
            return FieldType::Currency;
        case 7:    // adDate
        case 133:  // adDBDate
        case 134:  // adDBTime
        case 135:  // adDBTimeStamp
            return FieldType::Date;
        default:
            return FieldType::Text;
    }
}

std::int32_t AdoTypeOf(FieldType type) {
    switch (type) {
        case FieldType::Boolean:
            return 11;
        case FieldType::SmallInt:
            return 2;
        case FieldType::Integer:
            return 3;
        case FieldType::BigInt:
            return 20;
        case FieldType::Double:
            return 5;
        case FieldType::Currency:
            return 6;
        case FieldType::Date:
            return 7;
        case FieldType::Text:
            break;
    }
    return 8;  // adBSTR
}

}  // namespace vlm::data::ado
