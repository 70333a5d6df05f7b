#pragma once

#include "com/Variant.h"
#include "host/expression/Program.h"

namespace zu::host {

/// The value that an expression works with for what a client hands in: numbers of every kind, truth values,
/// dates (with or without a time of day), texts. Null and Empty are null; fields and other objects count by
/// their value when this is called. Throws ComError (type mismatch) for a content that is none of these.
void ToExpressionValue(const VARIANT& value, expression::Result& out);

/// The automation form of the result of an expression without a layout: Null, Boolean, Double, Date, text.
com::Variant FromExpressionValue(const expression::Result& result);

}  // namespace zu::host
