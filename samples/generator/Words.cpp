#include "samples/generator/Words.h"

#include <array>

namespace zu::samples {

namespace {

using Word = std::u16string_view;

constexpr Word kGermanCities[] = {u"Köln",     u"Düsseldorf", u"München",  u"Lübeck",  u"Görlitz", u"Bremen",
                                  u"Würzburg", u"Leipzig",    u"Tübingen", u"Rostock", u"Kassel",  u"Fürth"};
constexpr Word kGermanStreets[] = {u"Gartenstraße", u"Mühlenweg",    u"Am Hafen",    u"Lindenallee",
                                   u"Kirchplatz",   u"Schloßstraße", u"Färbergasse", u"Bahnhofstraße"};
constexpr Word kGermanGiven[] = {u"Jürgen", u"Käthe", u"Björn", u"Anke",    u"Friederike", u"Götz",
                                 u"Sören",  u"Heike", u"Uwe",   u"Marlene", u"Bärbel",     u"Lukas"};
constexpr Word kGermanFamily[] = {u"Müller",   u"Schröder", u"Weiß",   u"Krämer",   u"Vogt",  u"Böhm",
                                  u"Petersen", u"Lindner",  u"Größer", u"Hartmann", u"Jäger", u"Köster"};

constexpr Word kFrenchCities[] = {u"Orléans", u"Nîmes",  u"Besançon", u"Lyon",
                                  u"Béziers", u"Angers", u"Mâcon",    u"Saint-Étienne"};
constexpr Word kFrenchStreets[] = {u"rue de l'Église", u"avenue du Château", u"quai des Pêcheurs",
                                   u"place du Marché", u"rue Haute",         u"boulevard des Chênes"};
constexpr Word kFrenchGiven[] = {u"Zoé",    u"François", u"Hélène",  u"Jérôme",
                                 u"Maëlle", u"Luc",      u"Thérèse", u"Benoît"};
constexpr Word kFrenchFamily[] = {u"Lefèvre",  u"Bérard",  u"Dubois", u"Garçon",
                                  u"Marchand", u"Fournié", u"Rénaud", u"Carpentier"};

constexpr Word kBritishCities[] = {u"Leeds",  u"Norwich", u"Bristol",   u"Exeter",
                                   u"Durham", u"Lincoln", u"Inverness", u"Swansea"};
constexpr Word kBritishStreets[] = {u"Mill Lane",    u"High Street",   u"Castle Road",
                                    u"Station Road", u"Orchard Close", u"Quay Street"};
constexpr Word kBritishGiven[] = {u"Alice", u"Thomas", u"Harriet", u"Owen",
                                  u"Edith", u"George", u"Imogen",  u"Duncan"};
constexpr Word kBritishFamily[] = {u"Ashworth", u"O'Neill", u"Fletcher",   u"Hughes",
                                   u"Thatcher", u"Barlow",  u"McAllister", u"Pembroke"};

constexpr Word kSpanishCities[] = {u"Málaga", u"Córdoba", u"León", u"Cádiz", u"Logroño", u"Ávila", u"Girona"};
constexpr Word kSpanishStreets[] = {u"calle del Río", u"plaza de España", u"avenida de América",
                                    u"calle Muñoz", u"paseo del Jardín"};
constexpr Word kSpanishGiven[] = {u"José", u"Begoña", u"Íñigo", u"Lucía", u"Andrés", u"Pilar", u"Martín"};
constexpr Word kSpanishFamily[] = {u"Núñez",     u"García", u"Ibáñez", u"Peña",
                                   u"Rodríguez", u"Castro", u"Gómez"};

constexpr Word kSwedishCities[] = {u"Göteborg", u"Malmö", u"Örebro", u"Umeå", u"Växjö", u"Gävle", u"Kalmar"};
constexpr Word kSwedishStreets[] = {u"Björkgatan", u"Sjövägen", u"Ängsgatan", u"Storgatan", u"Åvägen"};
constexpr Word kSwedishGiven[] = {u"Åsa", u"Örjan", u"Märta", u"Göran", u"Linnéa", u"Anders", u"Elin"};
constexpr Word kSwedishFamily[] = {u"Sjöberg", u"Åkesson",  u"Lindström", u"Öberg",
                                   u"Nyström", u"Hägglund", u"Dahl"};

constexpr Word kDanishCities[] = {u"Århus", u"Køge", u"Helsingør", u"Odense", u"Rønne", u"Sønderborg"};
constexpr Word kDanishStreets[] = {u"Strandvej", u"Møllegade", u"Søndergade", u"Ågade", u"Kirkevænget"};
constexpr Word kDanishGiven[] = {u"Søren", u"Jørgen", u"Åse", u"Mette", u"Bjørn", u"Kæthe", u"Inger"};
constexpr Word kDanishFamily[] = {u"Sørensen", u"Nørgaard", u"Kjær",      u"Holm",
                                  u"Ravn",     u"Møller",   u"Østergaard"};

constexpr std::array kCountries{
    CountryWords{u"DE", u"GmbH", false, 5, kGermanCities, kGermanStreets, kGermanGiven, kGermanFamily},
    CountryWords{u"FR", u"SARL", true, 5, kFrenchCities, kFrenchStreets, kFrenchGiven, kFrenchFamily},
    CountryWords{u"GB", u"Ltd", true, 4, kBritishCities, kBritishStreets, kBritishGiven, kBritishFamily},
    CountryWords{u"ES", u"S.L.", false, 5, kSpanishCities, kSpanishStreets, kSpanishGiven, kSpanishFamily},
    CountryWords{u"SE", u"AB", false, 5, kSwedishCities, kSwedishStreets, kSwedishGiven, kSwedishFamily},
    CountryWords{u"DK", u"ApS", false, 4, kDanishCities, kDanishStreets, kDanishGiven, kDanishFamily},
};

constexpr Word kTrades[] = {u"Paper",  u"Tools",   u"Garden", u"Lighting",   u"Ceramics", u"Textiles",
                            u"Marine", u"Bakery",  u"Cycles", u"Timber",     u"Optics",   u"Coffee",
                            u"Books",  u"Kitchen", u"Glass",  u"Instruments"};

constexpr Word kCompanyWords[] = {u"Nordlicht", u"Étoile",  u"Harbour",  u"Solstice", u"Granite",
                                  u"Meridian",  u"Ærø",     u"Blue Fox", u"Windmill", u"Compass",
                                  u"Señal",     u"Juniper", u"Quarry",   u"Lantern",  u"Copper",
                                  u"Zenith",    u"Öresund", u"Old Town"};

constexpr Word kNoteSentences[] = {
    u"Please deliver to the back entrance, the bell is out of order.",
    u"Customer asks for a call the day before delivery.",
    u"Replacement for a damaged parcel; no charge for shipping.",
    u"Gift wrapping with the card «Bonne fête».",
    u"Pay attention to the new address – the old one is no longer in use.",
    u"Partial delivery is welcome, the rest may follow next month.",
    u"Invoice in euros (€), two copies.",
    u"Bitte ohne Füllmaterial verpacken.",
    u"The discount was agreed on the telephone with the sales office.",
    u"Fragile: keep upright, store above 5 °C.",
    u"Order placed at the trade fair, stand 14.",
    u"Customer pays on collection.",
    u"Livraison après 18 heures seulement.",
    u"Quality check wanted before dispatch: colour and size of every piece.",
    u"Urgent! The customer's own machine stands still until this arrives.",
};

constexpr Word kGoods[] = {u"desk lamp",   u"garden shears", u"copy paper",   u"tea service",
                           u"oak board",   u"sailcloth",     u"bicycle tyre", u"espresso cup",
                           u"window pane", u"wool blanket",  u"magnifier",    u"rye flour",
                           u"atlas",       u"metronome",     u"brass hinge",  u"folding chair"};

}  // namespace

std::span<const CountryWords> Countries() {
    return kCountries;
}
std::span<const Word> Trades() {
    return kTrades;
}
std::span<const Word> CompanyWords() {
    return kCompanyWords;
}
std::span<const Word> NoteSentences() {
    return kNoteSentences;
}
std::span<const Word> Goods() {
    return kGoods;
}

}  // namespace zu::samples
