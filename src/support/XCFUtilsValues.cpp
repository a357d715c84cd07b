// Typed getting and putting of values in property-list dictionaries and
// arrays, with the platform's number conversion rules.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <optional>
#include <string>

#include "support/TextEncoding.h"
#include "support/XCFUtils.h"

namespace XCFUtils {
namespace {

bool isType(plist_t node, plist_type type)
{
    return node && plist_get_node_type(node) == type;
}

// ------------------------------------------------------------ numbers ---

struct Number {
    bool isReal = false;
    int64_t integer = 0;
    double real = 0;
};

std::optional<Number> numberOf(plist_t node)
{
    Number number;
    if (isType(node, PLIST_UINT)) {
        uint64_t bits = 0;
        plist_get_uint_val(node, &bits);
        number.integer = static_cast<int64_t>(bits);
    } else if (isType(node, PLIST_REAL)) {
        number.isReal = true;
        plist_get_real_val(node, &number.real);
    } else {
        return std::nullopt;
    }
    return number;
}

// True when the real lies in the range of the signed integer type T.
template <typename T>
bool realFits(double real)
{
    constexpr double low = static_cast<double>(std::numeric_limits<T>::min());
    return real >= low && real < -low;
}

// Integer targets: exact when the value survives the round trip.
template <typename T>
bool storeInteger(const Number& number, void* out)
{
    T value = 0;
    bool exact = false;
    if (!number.isReal) {
        value = static_cast<T>(number.integer);
        exact = static_cast<int64_t>(value) == number.integer;
    } else if (realFits<T>(number.real)) {
        value = static_cast<T>(number.real);
        exact = static_cast<double>(value) == number.real;
    } else if (!std::isnan(number.real)) {
        value = number.real > 0 ? std::numeric_limits<T>::max() : std::numeric_limits<T>::min();
    }
    std::memcpy(out, &value, sizeof value);
    return exact;
}

// Real targets: exact when nothing was rounded away (NaN stays NaN).
template <typename T>
bool storeReal(const Number& number, void* out)
{
    T value = 0;
    bool exact = false;
    if (!number.isReal) {
        value = static_cast<T>(number.integer);
        exact = realFits<int64_t>(value) && static_cast<int64_t>(value) == number.integer;
    } else if (std::isnan(number.real) || std::isinf(number.real) ||
               std::fabs(number.real) <= std::numeric_limits<T>::max()) {
        value = static_cast<T>(number.real);
        exact = std::isnan(number.real) || static_cast<double>(value) == number.real;
    } else {
        constexpr T infinity = std::numeric_limits<T>::infinity();
        value = number.real > 0 ? infinity : -infinity;
    }
    std::memcpy(out, &value, sizeof value);
    return exact;
}

plist_t newInteger(int64_t value)
{
    return plist_new_uint(static_cast<uint64_t>(value));
}

// The platform's long is 32 bits wide: wider values wrap, and unsigned
// values from 2^31 up come back negative. This is intended.
int32_t asPlatformLong(unsigned long value)
{
    return static_cast<int32_t>(static_cast<uint32_t>(value));
}

// ------------------------------------------------------------ strings ---

std::optional<PlatformString> utf16Of(plist_t node)
{
    if (!isType(node, PLIST_STRING)) return std::nullopt;
    uint64_t length = 0;
    const char* text = plist_get_string_ptr(node, &length);
    if (!text) return PlatformString();
    return TextEncoding::UTF8ToUTF16(std::string_view(text, size_t(length)));
}

// A string node from zero-terminated UTF-8; null when it is not valid.
plist_t newString(const char* utf8)
{
    if (!utf8 || !TextEncoding::UTF8ToUTF16(utf8)) return nullptr;
    return plist_new_string(utf8);
}

// ---------------------------------------------------------- containers ---

bool putIntoDict(plist_t dict, const char* key, plist_t value)
{
    if (!value) return false;
    if (!isType(dict, PLIST_DICT) || !key) {
        plist_free(value);
        return false;
    }
    plist_dict_set_item(dict, key, value);
    return true;
}

bool appendOntoArray(plist_t array, plist_t value)
{
    if (!value) return false;
    if (!isType(array, PLIST_ARRAY)) {
        plist_free(value);
        return false;
    }
    plist_array_append_item(array, value);
    return true;
}

}  // namespace

// -------------------------------------------------------- dict lookups ---

bool GetCFTypeFromDict(plist_t dict, const char* key, plist_type type, plist_t& value)
{
    if (!isType(dict, PLIST_DICT) || !key) return false;
    plist_t item = plist_dict_get_item(dict, key);
    if (!isType(item, type)) return false;
    value = item;
    return true;
}

namespace {

// The item under `key` when it has that type; null otherwise.
plist_t typedItem(plist_t dict, const char* key, plist_type type)
{
    plist_t value = nullptr;
    GetCFTypeFromDict(dict, key, type, value);
    return value;
}

}  // namespace

plist_t GetCFBooleanFromDict(plist_t dict, const char* key)
{
    return typedItem(dict, key, PLIST_BOOLEAN);
}

plist_t GetCFNumberFromDict(plist_t dict, const char* key)
{
    if (plist_t integer = typedItem(dict, key, PLIST_UINT)) return integer;
    return typedItem(dict, key, PLIST_REAL);
}

plist_t GetCFStringFromDict(plist_t dict, const char* key)
{
    return typedItem(dict, key, PLIST_STRING);
}

plist_t XCFGetCFStringFromDictionary(plist_t dict, const char* key)
{
    return GetCFStringFromDict(dict, key);
}

plist_t GetCFArrayFromDict(plist_t dict, const char* key)
{
    return typedItem(dict, key, PLIST_ARRAY);
}

bool GetBoolFromDict(plist_t dict, const char* key, bool& out)
{
    return GetBoolFromCFValue(GetCFBooleanFromDict(dict, key), out);
}

bool GetDoubleFromDict(plist_t dict, const char* key, double& out)
{
    return GetDoubleFromCFValue(GetCFNumberFromDict(dict, key), out);
}

bool GetCharFromDict(plist_t dict, const char* key, char& out)
{
    return GetCharFromCFValue(GetCFNumberFromDict(dict, key), out);
}

bool GetShortFromDict(plist_t dict, const char* key, short& out)
{
    return GetShortFromCFValue(GetCFNumberFromDict(dict, key), out);
}

long XCFGetUniStringFromDictionary(plist_t dict, const char* key, unsigned short* buffer,
                                   long capacity)
{
    std::optional<PlatformString> text = utf16Of(GetCFStringFromDict(dict, key));
    if (!text) return 0;
    long length = static_cast<long>(text->size());
    if (length > capacity || (!buffer && length > 0)) return -length;
    if (length > 0) std::memcpy(buffer, text->data(), text->size() * sizeof(char16_t));
    return length;
}

long XCFGetUniStringNullTermFromDictionary(plist_t dict, const char* key, unsigned short* buffer,
                                           long capacity)
{
    long length = XCFGetUniStringFromDictionary(dict, key, buffer, capacity);
    // A text of exactly `capacity` units stays unterminated: intended.
    if (length > 0 && length < capacity) buffer[length] = 0;
    return length;
}

// ---------------------------------------------------- value conversion ---

bool GetBoolFromCFValue(plist_t value, bool& out)
{
    if (!isType(value, PLIST_BOOLEAN)) return false;
    uint8_t flag = 0;
    plist_get_bool_val(value, &flag);
    out = flag != 0;
    return true;
}

bool GetNumberFromCFValue(plist_t value, long numberType, void* out)
{
    std::optional<Number> number = numberOf(value);
    if (!number || !out) return false;
    switch (numberType) {
    case kNumberChar: return storeInteger<int8_t>(*number, out);
    case kNumberShort: return storeInteger<int16_t>(*number, out);
    case kNumberLong: return storeInteger<int32_t>(*number, out);
    case kNumberLongLong: return storeInteger<int64_t>(*number, out);
    case kNumberFloat: return storeReal<float>(*number, out);
    case kNumberDouble: return storeReal<double>(*number, out);
    default: return false;
    }
}

bool GetDoubleFromCFValue(plist_t value, double& out)
{
    return GetNumberFromCFValue(value, kNumberDouble, &out);
}

bool GetFloatFromCFValue(plist_t value, float& out)
{
    return GetNumberFromCFValue(value, kNumberFloat, &out);
}

bool GetLongLongFromCFValue(plist_t value, unsigned long long& out)
{
    return GetNumberFromCFValue(value, kNumberLongLong, &out);
}

bool GetLongFromCFValue(plist_t value, long& out)
{
    if (!numberOf(value)) return false;
    int32_t number = 0;
    bool exact = GetNumberFromCFValue(value, kNumberLong, &number);
    out = number;
    return exact;
}

bool GetShortFromCFValue(plist_t value, short& out)
{
    return GetNumberFromCFValue(value, kNumberShort, &out);
}

bool GetCharFromCFValue(plist_t value, char& out)
{
    return GetNumberFromCFValue(value, kNumberChar, &out);
}

bool GetStringFromCFValue(plist_t value, unsigned short*& out)
{
    std::optional<PlatformString> text = utf16Of(value);
    if (!text) return false;
    auto* copy = static_cast<unsigned short*>(std::malloc((text->size() + 1) * sizeof(char16_t)));
    if (!copy) return false;
    std::memcpy(copy, text->data(), text->size() * sizeof(char16_t));
    copy[text->size()] = 0;
    out = copy;
    return true;
}

// ------------------------------------------------------------- putting ---

bool PutBoolIntoDict(plist_t dict, const char* key, bool value)
{
    return putIntoDict(dict, key, plist_new_bool(value));
}

bool PutCharIntoDict(plist_t dict, const char* key, char value)
{
    return putIntoDict(dict, key, newInteger(static_cast<signed char>(value)));
}

bool PutShortIntoDict(plist_t dict, const char* key, short value)
{
    return putIntoDict(dict, key, newInteger(value));
}

bool PutLongIntoDict(plist_t dict, const char* key, long value)
{
    return putIntoDict(dict, key, newInteger(asPlatformLong(static_cast<unsigned long>(value))));
}

bool PutULongIntoDict(plist_t dict, const char* key, unsigned long value)
{
    return putIntoDict(dict, key, newInteger(asPlatformLong(value)));
}

bool PutUTF8NullTermCharPtrIntoDict(plist_t dict, const char* key, const char* value)
{
    return putIntoDict(dict, key, newString(value));
}

bool PutNullTermCharPtrIntoDict(plist_t dict, const char* key, const char* value,
                                unsigned long encoding)
{
    if (!value) return false;
    std::optional<std::string> utf8 =
        TextEncoding::ToUTF8(value, static_cast<uint32_t>(encoding));
    if (!utf8) return false;
    return putIntoDict(dict, key, plist_new_string(utf8->c_str()));
}

bool AppendBoolOntoArray(plist_t array, bool value)
{
    return appendOntoArray(array, plist_new_bool(value));
}

bool AppendShortOntoArray(plist_t array, short value)
{
    return appendOntoArray(array, newInteger(value));
}

bool AppendLongOntoArray(plist_t array, long value)
{
    return appendOntoArray(array, newInteger(asPlatformLong(static_cast<unsigned long>(value))));
}

bool AppendULongOntoArray(plist_t array, unsigned long value)
{
    return appendOntoArray(array, newInteger(asPlatformLong(value)));
}

bool AppendUTF8NullTermCharPtrOntoArray(plist_t array, const char* value)
{
    return appendOntoArray(array, newString(value));
}

}  // namespace XCFUtils
