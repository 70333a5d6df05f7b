#include "samples/generator/Customers.h"

#include "host/technologies/dbf/TableWriter.h"
#include "portable/calendar/Calendar.h"
#include "samples/generator/LastChange.h"
#include "samples/generator/Random.h"
#include "samples/generator/Words.h"

namespace zu::samples {

namespace {

enum Column : std::size_t {
    kId,
    kName,
    kContact,
    kStreet,
    kPostcode,
    kCity,
    kCountry,
    kSince,
    kCredit,
    kActive
};

std::u16string Digits(std::uint32_t number) {
    std::u16string digits;
    for (const char digit : std::to_string(number))
        digits.push_back(static_cast<char16_t>(digit));
    return digits;
}

std::u16string CompanyName(Random& random, const CountryWords& words) {
    std::u16string name(random.Chance(40) ? random.Pick(words.familyNames) : random.Pick(CompanyWords()));
    name += u' ';
    name += random.Pick(Trades());
    name += u' ';
    name += words.companyForm;
    return name;
}

std::u16string Street(Random& random, const CountryWords& words) {
    const std::u16string_view street = random.Pick(words.streets);
    const std::u16string number = Digits(1 + random.Below(180));
    return words.numberBeforeStreet ? number + u' ' + std::u16string(street)
                                    : std::u16string(street) + u' ' + number;
}

std::u16string Postcode(Random& random, const CountryWords& words) {
    std::u16string digits;
    for (int place = 0; place < words.postcodeDigits; ++place)
        digits += Digits(random.Below(10));
    return digits;
}

/// The first countries have the most customers.
const CountryWords& PickCountry(Random& random) {
    const auto countries = Countries();
    const auto count = static_cast<std::uint32_t>(countries.size());
    const std::uint32_t first = random.Below(count);
    const std::uint32_t second = random.Below(count);
    return countries[first < second ? first : second];
}

}  // namespace

void WriteCustomers(files::FileSystem& system, const std::string& folder, std::uint32_t count) {
    dbf::TableWriter table(system, folder + "/customers.dbf", dbf::Format::FoxPro2, 0x03,
                           {{"ID", 'N', 8, 0},
                            {"NAME", 'C', 40, 0},
                            {"CONTACT", 'C', 30, 0},
                            {"STREET", 'C', 36, 0},
                            {"POSTCODE", 'C', 8, 0},
                            {"CITY", 'C', 24, 0},
                            {"COUNTRY", 'C', 2, 0},
                            {"SINCE", 'D', 8, 0},
                            {"CREDIT", 'N', 12, 2},
                            {"ACTIVE", 'L', 1, 0}},
                           kLastChange);
    const std::int32_t opening = calendar::ToJulianDay({2011, 3, 1});

    Random random(20110301);
    for (std::uint32_t id = 1; id <= count; ++id) {
        const CountryWords& words = PickCountry(random);
        table.SetNumber(kId, id);
        table.SetText(kName, CompanyName(random, words));
        std::u16string contact(random.Pick(words.givenNames));
        contact += u' ';
        contact += random.Pick(words.familyNames);
        table.SetText(kContact, contact);
        table.SetText(kStreet, Street(random, words));
        table.SetText(kPostcode, Postcode(random, words));
        table.SetText(kCity, random.Pick(words.cities));
        table.SetText(kCountry, words.code);
        // Numbers were given in the order of the first contact: about four customers a day.
        const auto day = static_cast<std::int32_t>(static_cast<std::uint64_t>(id) * 5400 / (count + 1));
        table.SetDate(kSince, calendar::FromJulianDay(opening + day));
        table.SetDecimal(kCredit, static_cast<std::int64_t>(random.Below(200)) * random.Below(200) * 2500);
        table.SetBoolean(kActive, random.Chance(88));
        table.Append(random.Chance(3));
    }
    table.Close({{"ID", "ID"},
                 {"NAME", "UPPER(NAME)"},
                 {"COUNTRY", "COUNTRY+DTOS(SINCE)"},
                 {.name = "CREDIT", .key = "CREDIT", .descending = true},
                 {.name = "ACTIVE", .key = "UPPER(NAME)", .filter = "ACTIVE"}});
}

}  // namespace zu::samples
