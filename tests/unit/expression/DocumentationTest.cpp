#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "host/expression/Function.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"
#include "tests/unit/expression/RecordBuilder.h"

namespace zu::expression::testing {
namespace {

std::string ReadPage() {
    std::ifstream file("docs/expressions.md", std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::vector<std::string> Examples() {
    std::vector<std::string> examples;
    std::istringstream page(ReadPage());
    bool inside = false;
    for (std::string line; std::getline(page, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.starts_with("```")) {
            inside = line == "```expressions";
        } else if (inside) {
            examples.push_back(line);
        }
    }
    return examples;
}

TEST(Documentation, EveryExampleIsTrueForTheSampleRecord) {
    const std::vector<std::string> examples = Examples();
    ASSERT_GT(examples.size(), 100U);
    for (const std::string& example : examples) {
        try {
            EXPECT_TRUE(IsTrue(text::ToUtf16(example))) << example;
        } catch (const Error& error) {
            ADD_FAILURE() << example << ": " << error.what();
        }
    }
}

TEST(Documentation, EveryFunctionHasItsLineAndAnExample) {
    const std::string page = ReadPage();
    std::string examples;
    for (const std::string& example : Examples())
        examples += example + "\n";
    for (const std::string_view name : FunctionNames()) {
        const std::string call = std::string(name) + "(";
        EXPECT_NE(page.find("`" + std::string(name)), std::string::npos) << name;
        EXPECT_NE(examples.find(call), std::string::npos) << "no example with " << call;
    }
}

TEST(Documentation, QuotesTheMessagesOfFaultsAsTheyAre) {
    const std::string page = ReadPage();
    for (const auto* source : {u"AMONT > 3", u"(AMOUNT + 1", u"LEFT(CUSTOMER, \"3\")"}) {
        EXPECT_NE(page.find(Shown(source)), std::string::npos) << Shown(source);
    }
}

}  // namespace
}  // namespace zu::expression::testing
