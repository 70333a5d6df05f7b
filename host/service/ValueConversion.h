#pragma once

#include <windows.h>

#include <oleauto.h>

#include "com/Variant.h"
#include "host/technologies/Table.h"
#include "host/technologies/Value.h"

namespace zu::host {

/// The automation form of a field's value: Null for no value, else the automation type that `type` names
/// (texts for long text, an array of bytes for binary). Dates before the year 100, which automation cannot
/// hold, are Null.
com::Variant ToVariant(const technologies::Value& value, technologies::FieldType type);

/// The value for a field of type `type` that `value` stands for. Null, Empty, an omitted value and, except
/// for texts, blank text give no value. Objects count by their default value, script dates as dates. Dates as
/// text read 2026-11-21 (with the time behind when there is one), truth values True and False. Throws
/// ComError: type mismatch, overflow.
technologies::Value FromVariant(const VARIANT& value, technologies::FieldType type);

/// The same into an existing value, whose buffers are used again.
void FromVariant(const VARIANT& value, technologies::FieldType type, technologies::Value& out);

/// As FromVariant, for the part of an index key: dates become YYYYMMDD where the key is text.
technologies::Value KeyFromVariant(const VARIANT& value, technologies::FieldType type);

/// Takes away what means nothing in the field: trailing blanks, the time of day in a field that holds days.
void TrimToField(technologies::Value& value, const technologies::FieldDescription& field);

/// Trims, rounds to the field's decimals and throws an Overflow error that names the field
/// when the value is wider than the field.
void FitToField(technologies::Value& value, const technologies::FieldDescription& field,
                const std::string& table);

/// Scripts calculate with doubles; not every script engine takes decimals. Turns a decimal of at most 15
/// digits, which a double holds without loss, into a double and leaves everything else alone.
void MakeUsableForScripts(VARIANT& value) noexcept;

}  // namespace zu::host
