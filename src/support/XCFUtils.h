// Small stateless helpers over property-list objects (libplist's plist_t):
// reading a property-list file, writing one as XML, typed getting and
// putting of values in dictionaries and arrays. Failures are false, zero,
// negative or null results; nothing throws. The file functions print one
// diagnostic line to standard output per failure.
//
// Ownership: "Create"/"Copy" results belong to the caller (plist_free);
// "Get" results are borrowed from their container.
#pragma once

#include <plist/plist.h>

#include <cstdio>

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

// Mutability options of the reader, in the platform's numbering.
enum : unsigned long {
    kPropertyListImmutable = 0,
    kPropertyListMutableContainers = 1,
    kPropertyListMutableContainersAndLeaves = 2,
};

// Files. Paths are UTF-8; a null path gives null / false.
// 0, the errno of a failed seek, or -1 for a null file.
int GetFileLengthAndRewind(FILE* file, unsigned long* length);
plist_t XCFCreateCFDataRefFromPath(const char* path);                       // a data node
plist_t XCFCreateCFPropertyListFromPath(const char* path, unsigned long mutability);
bool XCFWriteCFPropertyListToXMLFile(plist_t list, const char* path);
bool XCFWriteCFDataRefToXMLFile(plist_t data, const char* path);
void CFShowX(plist_t value);

// Typed lookup in a dictionary: the value must exist and have exactly the
// asked type, otherwise null / false and the out argument is untouched.
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
long XCFGetUniStringFromDictionary(plist_t dict, const char* key, unsigned short* buffer,
                                   long capacity);
long XCFGetUniStringNullTermFromDictionary(plist_t dict, const char* key, unsigned short* buffer,
                                           long capacity);

// Conversion of one value; false when it has another type.
bool GetBoolFromCFValue(plist_t value, bool& out);
bool GetNumberFromCFValue(plist_t value, long numberType, void* out);
bool GetDoubleFromCFValue(plist_t value, double& out);
bool GetFloatFromCFValue(plist_t value, float& out);
bool GetLongLongFromCFValue(plist_t value, unsigned long long& out);
bool GetLongFromCFValue(plist_t value, long& out);
bool GetShortFromCFValue(plist_t value, short& out);
bool GetCharFromCFValue(plist_t value, char& out);
// A new malloc'd, zero-terminated UTF-16 copy; the caller frees it.
bool GetStringFromCFValue(plist_t value, unsigned short*& out);

// Putting into a dictionary (replacing) or appending to an array; false only
// when the value cannot be made.
bool PutBoolIntoDict(plist_t dict, const char* key, bool value);
bool PutCharIntoDict(plist_t dict, const char* key, char value);
bool PutShortIntoDict(plist_t dict, const char* key, short value);
bool PutLongIntoDict(plist_t dict, const char* key, long value);
bool PutULongIntoDict(plist_t dict, const char* key, unsigned long value);
bool PutUTF8NullTermCharPtrIntoDict(plist_t dict, const char* key, const char* value);
bool PutNullTermCharPtrIntoDict(plist_t dict, const char* key, const char* value,
                                unsigned long encoding);
bool AppendBoolOntoArray(plist_t array, bool value);
bool AppendShortOntoArray(plist_t array, short value);
bool AppendLongOntoArray(plist_t array, long value);
bool AppendULongOntoArray(plist_t array, unsigned long value);
bool AppendUTF8NullTermCharPtrOntoArray(plist_t array, const char* value);

}  // namespace XCFUtils
