#pragma once

#include <span>
#include <string_view>

namespace zu::samples {

/// What names and addresses of a country are made from. All texts are UTF-16 and lie in Windows-1252.
struct CountryWords {
    std::u16string_view code;  ///< two letters
    std::u16string_view companyForm;
    bool numberBeforeStreet;
    int postcodeDigits;
    std::span<const std::u16string_view> cities;
    std::span<const std::u16string_view> streets;
    std::span<const std::u16string_view> givenNames;
    std::span<const std::u16string_view> familyNames;
};

/// The countries of the sample customers; the first ones have the most customers.
std::span<const CountryWords> Countries();

/// What a company does, for company names ("Nordlicht Papier GmbH").
std::span<const std::u16string_view> Trades();

/// First words of company names.
std::span<const std::u16string_view> CompanyWords();

/// Sentences for the notes of orders.
std::span<const std::u16string_view> NoteSentences();

/// What was ordered.
std::span<const std::u16string_view> Goods();

}  // namespace zu::samples
