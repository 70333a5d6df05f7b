#pragma once

#include <map>
#include <optional>

#include "host/expression/Compiler.h"
#include "host/expression/Node.h"
#include "host/expression/Program.h"

namespace zu::expression {

/// The fields that a condition leaves only one value (COUNTRY = "DE"), and what follows for expressions over
/// them: with COUNTRY and ORDERED known, UPPER(COUNTRY) and DTOS(ORDERED) are known as well.
class FieldDetermination {
public:
    explicit FieldDetermination(Compiler& compiler) : compiler_(compiler) {}

    /// Takes note when `term` is a field that equals a constant.
    void Learn(const Node& term);

    /// The value of `expression` when all its fields are known, and when it is the same no matter whether
    /// texts are padded with blanks or NULs.
    std::optional<Result> ValueOf(const Node& expression);

    /// The value of a call of one argument for `argument`.
    Result Apply(const Node& call, const Result& argument);

private:
    NodePtr Substitute(const Node& node) const;
    Result Evaluate(const Node& constant);
    static NodePtr LiteralOf(const Result& value);

    struct Known {
        Result value;
        std::size_t width;  ///< of a text field
    };
    Compiler& compiler_;
    std::map<std::size_t, Known> fields_;
};

}  // namespace zu::expression
