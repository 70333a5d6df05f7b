#pragma once

#include <string>

namespace zu::dbf::cdx {

/// A tag to be made. Texts are bytes of the table's code page.
struct TagDefinition {
    std::string name;         ///< 1 to 10 characters; stored in upper case
    std::string key;          ///< the key expression
    std::string filter{};     ///< the FOR condition; empty: every record has a key
    bool unique = false;      ///< only the first record of equal keys is kept
    bool candidate = false;   ///< equal keys are refused
    bool descending = false;  ///< stored ascending all the same, walked backwards
};

}  // namespace zu::dbf::cdx
