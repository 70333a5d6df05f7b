// clsEvaluator: conditions on a record that is in no table yet.
#include "component/table/clsEvaluator.h"

#include "component/engine/EngineLink.h"
#include "tests/contract/ContractTest.h"
#include "tests/contract/fake/FakeParser.h"

namespace zu::contract {

using com::ComPtr;
using com::Variant;
using component::clsEvaluator;
using fake::FakeParser;
using fake::Journal;
using fake::Scene;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Evaluator : public ContractTest {
protected:
    void SetUp() override {
        ContractTest::SetUp();
        component::Engine();  // the program has a copy of the component of its own, with its own link
        TakeCalls();
    }
    ComPtr<ZuDataFields> Fields() {
        ComPtr<ZuDataFields> fields;
        EXPECT_EQ(Select()->get_Fields(fields.put()), S_OK);
        TakeCalls();
        return fields;
    }
};

TEST_F(Evaluator, CreatesTheParserByItsNameAndPassesTheFormulaOn) {
    clsEvaluator evaluator;
    evaluator.SetFormula(L"A > 1");
    EXPECT_TRUE(evaluator.Evaluate());
    EXPECT_THAT(TakeCalls(), ElementsAre("Create(ZuParser.Parser)", "ZuParser.Formula(= \"A > 1\")",
                                         "ZuParser.Evaluate()"));
}

TEST_F(Evaluator, NamesAreAnsweredWithTheFieldItselfAsItIsEachTime) {
    clsEvaluator evaluator;
    evaluator.SetFields(Fields());
    Scene().evaluates = [](FakeParser& parser) {
        const Variant field = parser.Ask(L"NAME");
        EXPECT_EQ(field.type(), VT_DISPATCH);
        Variant value;
        const auto object = com::ObjectOf<ZuDataField>(field);
        EXPECT_TRUE(object);
        if (object) object->get_Value(value.put());
        return Variant(com::TextOf(value) == L"yes");
    };
    Scene().fields = {{L"NAME", VT_BSTR, Variant(L"yes")}};
    EXPECT_TRUE(evaluator.Evaluate());
    Scene().fields = {{L"NAME", VT_BSTR, Variant(L"no")}};
    EXPECT_FALSE(evaluator.Evaluate());
}

TEST_F(Evaluator, UnknownNamesLeaveTheValueAsTheParserPassedIt) {
    clsEvaluator evaluator;
    Scene().evaluates = [](FakeParser& parser) {
        EXPECT_EQ(com::TextOf(parser.Ask(L"NOSUCH", Variant(L"unset"))), L"unset");
        return Variant(true);
    };
    EXPECT_TRUE(evaluator.Evaluate()) << "no fields at all";
    evaluator.SetFields(Fields());
    EXPECT_TRUE(evaluator.Evaluate()) << "no such field";
    Journal::OfThread().AnswerNothingOn("ZuDataFields.Item");
    EXPECT_TRUE(evaluator.Evaluate()) << "no field where one should be";
}

TEST_F(Evaluator, SyntaxErrorIsReportedWithReferencesToNumberAndText) {
    clsEvaluator evaluator;
    TakeCalls();
    Scene().evaluates = [](FakeParser& parser) {
        parser.TellFault(7, L"expected a value");
        return Variant(L"no truth value");
    };
    EXPECT_FALSE(evaluator.Evaluate());
    EXPECT_THAT(TakeCalls(),
                ElementsAre("ZuParser.Evaluate()",
                            "ZuEngineMessages.RaiseError(80041017, [0..1: &I4 7, &\"expected a value\"])"));
}

TEST_F(Evaluator, ResultsAreConvertedToTruthValues) {
    clsEvaluator evaluator;
    const auto truth = [&](Variant result) {
        Scene().evaluates = [&](FakeParser&) { return result; };
        return evaluator.Evaluate();
    };
    EXPECT_TRUE(truth(Variant(LONG{-7})));
    EXPECT_TRUE(truth(Variant(0.5)));
    EXPECT_TRUE(truth(Variant(L"True")));
    EXPECT_FALSE(truth(Variant(LONG{0})));
    EXPECT_FALSE(truth(Variant()));
    EXPECT_FALSE(truth(Variant::Null())) << "cannot be converted";
    EXPECT_FALSE(truth(Variant(L"perhaps"))) << "cannot be converted";
}

TEST_F(Evaluator, FailingEvaluateIsFalse) {
    clsEvaluator evaluator;
    Journal::OfThread().FailOn("ZuParser.Evaluate");
    EXPECT_FALSE(evaluator.Evaluate());
    TakeCalls();
    EXPECT_TRUE(evaluator.Evaluate());
}

TEST_F(Evaluator, FailingReportDoesNotReachTheParser) {
    clsEvaluator evaluator;
    Journal::OfThread().FailOn("ZuEngineMessages.RaiseError");
    Scene().evaluates = [](FakeParser& parser) {
        parser.TellFault(1, L"x");
        return Variant(true);
    };
    EXPECT_TRUE(evaluator.Evaluate());
}

TEST_F(Evaluator, EventsThatItDoesNotKnowArePassedOver) {
    clsEvaluator evaluator;
    TakeCalls();
    Scene().evaluates = [](FakeParser& parser) {
        parser.Tell(99, 2);
        parser.Tell(1, 0);
        parser.Tell(2, 2);
        return Variant(true);
    };
    EXPECT_TRUE(evaluator.Evaluate());
    EXPECT_THAT(TakeCalls(), ElementsAre("ZuParser.Evaluate()"));
}

TEST_F(Evaluator, LeavesTheParserWhenItGoes) {
    FakeParser* parser = nullptr;
    ComPtr<ZuParser> kept;
    {
        clsEvaluator evaluator;
        Scene().evaluates = [&](FakeParser& running) {
            parser = &running;
            kept = com::Share(static_cast<ZuParser*>(&running));
            EXPECT_EQ(running.clients(), 1u);
            return Variant(true);
        };
        EXPECT_TRUE(evaluator.Evaluate());
    }
    ASSERT_NE(parser, nullptr);
    EXPECT_EQ(parser->clients(), 0u);
    Scene().evaluates = nullptr;
    kept.reset();
    EXPECT_EQ(LiveObjects(), 0u);
}

TEST_F(Evaluator, ParserThatCannotBeHadIsAnError) {
    Journal::OfThread().FailOn("Create");
    EXPECT_THROW(clsEvaluator(), com::ComError);
    Journal::OfThread().Clear();
    Scene().withheld = {IID_IConnectionPointContainer};
    EXPECT_THROW(clsEvaluator(), com::ComError);
    SetErrorInfo(0, nullptr);
}

}  // namespace zu::contract
