#include "host/technologies/dbf/maintenance/FieldPlan.h"

#include <gtest/gtest.h>

#include "portable/error/Error.h"

namespace zu::dbf::test {
namespace {

using maintenance::FieldPlan;
using maintenance::PlanFields;
using technologies::FieldDescription;
using technologies::FieldType;

FieldDescription Described(FieldType type, int size = 0, int decimals = 0, bool nullable = false) {
    FieldDescription field;
    field.name = "A";
    field.type = type;
    field.size = size;
    field.decimals = decimals;
    field.nullable = nullable;
    return field;
}

FieldPlan Planned(const FieldDescription& field, std::string_view wanted = "") {
    return PlanFields({field}, wanted, text::CodePage::Default());
}

std::string Shown(const FieldPlan& plan) {
    const FieldDefinition& field = plan.fields.front();
    const char* formats[] = {"dBASE", "FoxPro", "Visual"};
    std::string shown = formats[static_cast<int>(plan.format)];
    (shown += ' ') += field.type;
    if (std::string_view("CNFQ").find(field.type) != std::string_view::npos)
        shown += std::to_string(field.width);
    if (field.decimals != 0) shown += "." + std::to_string(field.decimals);
    return shown;
}

ErrorKind KindOf(const FieldDescription& field, std::string_view wanted) {
    try {
        Planned(field, wanted);
    } catch (const Error& error) {
        EXPECT_NE(std::string(error.what()).find("\"A\""), std::string::npos) << error.what();
        return error.kind();
    }
    return ErrorKind::Internal;
}

TEST(FieldPlans, EveryTypeHasItsFieldAndTheOldestFormatThatHoldsIt) {
    EXPECT_EQ(Shown(Planned(Described(FieldType::Text, 30))), "dBASE C30");
    EXPECT_EQ(Shown(Planned(Described(FieldType::Text, 254))), "dBASE C254");
    EXPECT_EQ(Shown(Planned(Described(FieldType::Text, 255))), "FoxPro M");
    EXPECT_EQ(Shown(Planned(Described(FieldType::LongText, 10))), "FoxPro M");
    EXPECT_EQ(Shown(Planned(Described(FieldType::Decimal, 12, 2))), "dBASE N12.2");
    EXPECT_EQ(Shown(Planned(Described(FieldType::Decimal))), "dBASE N20");
    EXPECT_EQ(Shown(Planned(Described(FieldType::Double, 14, 3))), "dBASE F14.3");
    EXPECT_EQ(Shown(Planned(Described(FieldType::Double, 20, 4))), "Visual B.4");
    EXPECT_EQ(Shown(Planned(Described(FieldType::Single))), "Visual B");
    EXPECT_EQ(Shown(Planned(Described(FieldType::Integer32, 11))), "Visual I");
    EXPECT_EQ(Shown(Planned(Described(FieldType::Integer16))), "Visual I");
    EXPECT_EQ(Shown(Planned(Described(FieldType::Byte))), "Visual I");
    EXPECT_EQ(Shown(Planned(Described(FieldType::Currency, 21, 4))), "Visual Y");
    EXPECT_EQ(Shown(Planned(Described(FieldType::Date, 8))), "dBASE D");
    EXPECT_EQ(Shown(Planned(Described(FieldType::Date, 14))), "Visual T");
    EXPECT_EQ(Shown(Planned(Described(FieldType::Boolean, 1))), "dBASE L");
    EXPECT_EQ(Shown(Planned(Described(FieldType::Binary, 10))), "FoxPro G");
    EXPECT_EQ(Shown(Planned(Described(FieldType::Binary, 40))), "Visual Q40");
    EXPECT_EQ(Shown(Planned(Described(FieldType::Text, 5, 0, true))), "Visual C5");
}

TEST(FieldPlans, TheFormatCanBeSetInAnyCaseWithAndWithoutBlanks) {
    EXPECT_EQ(Planned(Described(FieldType::Text, 5), "Visual FoxPro").format, Format::VisualFoxPro);
    EXPECT_EQ(Planned(Described(FieldType::Text, 5), "FOXPRO2").format, Format::FoxPro2);
    EXPECT_EQ(Planned(Described(FieldType::LongText), "dbase iii").format, Format::DBase3);
    EXPECT_THROW(Planned(Described(FieldType::Text, 5), "Paradox"), Error);
}

TEST(FieldPlans, OlderFormatsKeepIntegersAsDigits) {
    EXPECT_EQ(Shown(Planned(Described(FieldType::Integer32), "dBASE III")), "dBASE N11");
    EXPECT_EQ(Shown(Planned(Described(FieldType::Integer16), "FoxPro 2")), "FoxPro N6");
    EXPECT_EQ(Shown(Planned(Described(FieldType::Byte), "FoxPro 2")), "FoxPro N3");
}

TEST(FieldPlans, AFieldThatTheWantedFormatDoesNotHaveIsRefused) {
    EXPECT_EQ(KindOf(Described(FieldType::Currency), "FoxPro 2"), ErrorKind::Unsupported);
    EXPECT_EQ(KindOf(Described(FieldType::Date, 14), "dBASE III"), ErrorKind::Unsupported);
    EXPECT_EQ(KindOf(Described(FieldType::Double, 20), "dBASE III"), ErrorKind::Unsupported);
    EXPECT_EQ(KindOf(Described(FieldType::Binary, 10), "dBASE III"), ErrorKind::Unsupported);
    EXPECT_EQ(KindOf(Described(FieldType::Binary, 40), "FoxPro 2"), ErrorKind::Unsupported);
    EXPECT_EQ(KindOf(Described(static_cast<FieldType>(77)), ""), ErrorKind::InvalidArgument);
}

TEST(FieldPlans, ANameOutsideTheCodePageIsRefused) {
    FieldDescription field = Described(FieldType::Boolean);
    field.name = "\xD0\x96";  // a Cyrillic letter
    EXPECT_THROW(Planned(field), Error);
}

}  // namespace
}  // namespace zu::dbf::test
