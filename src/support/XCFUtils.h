// Small stateless helpers over property-list objects (libplist's plist_t):
// reading a property-list file, writing one as XML, typed getting and
// putting of values in dictionaries and arrays. Failures are false, zero,
// negative or null results; nothing throws. The file functions print one
// diagnostic line to standard output per failure.
//
// Ownership: "Create"/"Copy" results belong to the caller (plist_free);
// "Get" results are borrowed from their container.
//
// Numbers: libplist keeps every integer in a PLIST_UINT node; its bits are
// read as a signed 64-bit value (that is how libplist writes and parses
// negative integers). Reals are PLIST_REAL nodes. Strings are UTF-8.
#pragma once

#include <plist/plist.h>

#include <cstddef>
#include <cstdio>
#include <string_view>

namespace XCFUtils {

// Number types by their platform codes.
enum : long {
    kNumberChar = 7,
    kNumberShort = 8,
    kNumberLong = 10,      // 32-bit
    kNumberLongLong = 11,
    kNumberFloat = 12,
    kNumberDouble = 13,
};

// Mutability options of the reader, in the platform's numbering. libplist
// nodes are always mutable, so the option changes nothing.
enum : unsigned long {
    kPropertyListImmutable = 0,
    kPropertyListMutableContainers = 1,
    kPropertyListMutableContainersAndLeaves = 2,
};

// Files. Paths are UTF-8; a null path gives null / false.
// 0, the errno of a failed seek or tell, or -1 for a null file or length.
int GetFileLengthAndRewind(FILE* file, unsigned long* length);
plist_t XCFCreateCFDataRefFromPath(const char* path);                       // a data node
plist_t XCFCreateCFPropertyListFromPath(const char* path, unsigned long mutability);
bool XCFWriteCFPropertyListToXMLFile(plist_t list, const char* path);
bool XCFWriteCFDataRefToXMLFile(plist_t data, const char* path);
// Prints the value as an XML property list to standard output (debugging).
void CFShowX(plist_t value);

// An XML or binary property list held in memory; null when it cannot be
// parsed or is shaped so that parsing it would be unsafe (nesting deeper
// than kMaxPropertyListDepth, reference cycles, shared containers that
// expand beyond the size of the input). Prints nothing.
plist_t XCFCreateCFPropertyListFromBytes(std::string_view bytes);
constexpr size_t kMaxPropertyListDepth = 512;

// Typed lookup in a dictionary: the value must exist and have exactly the
// asked type, otherwise null / false and the out argument is untouched.
// A number is a PLIST_UINT or PLIST_REAL node.
bool GetCFTypeFromDict(plist_t dict, const char* key, plist_type type, plist_t& value);
plist_t GetCFBooleanFromDict(plist_t dict, const char* key);
plist_t GetCFNumberFromDict(plist_t dict, const char* key);
plist_t GetCFStringFromDict(plist_t dict, const char* key);
plist_t XCFGetCFStringFromDictionary(plist_t dict, const char* key);
plist_t GetCFArrayFromDict(plist_t dict, const char* key);
bool GetBoolFromDict(plist_t dict, const char* key, bool& out);
bool GetDoubleFromDict(plist_t dict, const char* key, double& out);
bool GetCharFromDict(plist_t dict, const char* key, char& out);
bool GetShortFromDict(plist_t dict, const char* key, short& out);
// Copies the string's UTF-16 units and returns their count; 0 for a missing
// key or a value that is not a string; the negated length (nothing copied)
// when the string has more than `capacity` units or `buffer` is null.
long XCFGetUniStringFromDictionary(plist_t dict, const char* key, unsigned short* buffer,
                                   long capacity);
// The same, plus a zero unit after the text when 0 < count < capacity.
long XCFGetUniStringNullTermFromDictionary(plist_t dict, const char* key, unsigned short* buffer,
                                           long capacity);

// Conversion of one value; false when it has another type.
bool GetBoolFromCFValue(plist_t value, bool& out);
// A number converted to the type `numberType` into *out. When the value does
// not survive the conversion exactly (out of range, a fraction dropped, a
// real rounded) the conversion is lossy: an approximate value is stored and
// the result is false. False without storing for a null out, a value that is
// not a number, or an unknown type code.
bool GetNumberFromCFValue(plist_t value, long numberType, void* out);
bool GetDoubleFromCFValue(plist_t value, double& out);
bool GetFloatFromCFValue(plist_t value, float& out);
bool GetLongLongFromCFValue(plist_t value, unsigned long long& out);
bool GetLongFromCFValue(plist_t value, long& out);  // through the 32-bit type
bool GetShortFromCFValue(plist_t value, short& out);
bool GetCharFromCFValue(plist_t value, char& out);
// A new malloc'd, zero-terminated UTF-16 copy; the caller frees it.
bool GetStringFromCFValue(plist_t value, unsigned short*& out);

// Putting into a dictionary (replacing) or appending to an array; false when
// the value cannot be made (text that is not valid in its encoding) or the
// container is not a dictionary / array. A failed call changes nothing.
bool PutBoolIntoDict(plist_t dict, const char* key, bool value);
bool PutCharIntoDict(plist_t dict, const char* key, char value);
bool PutShortIntoDict(plist_t dict, const char* key, short value);
bool PutLongIntoDict(plist_t dict, const char* key, long value);
bool PutULongIntoDict(plist_t dict, const char* key, unsigned long value);
bool PutUTF8NullTermCharPtrIntoDict(plist_t dict, const char* key, const char* value);
// `encoding` is a CF encoding number (see support/TextEncoding.h).
bool PutNullTermCharPtrIntoDict(plist_t dict, const char* key, const char* value,
                                unsigned long encoding);
bool AppendBoolOntoArray(plist_t array, bool value);
bool AppendShortOntoArray(plist_t array, short value);
bool AppendLongOntoArray(plist_t array, long value);
bool AppendULongOntoArray(plist_t array, unsigned long value);
bool AppendUTF8NullTermCharPtrOntoArray(plist_t array, const char* value);

}  // namespace XCFUtils
