#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/expression/Program.h"
#include "host/technologies/Table.h"
#include "host/technologies/dbf/cdx/KeyBounds.h"
#include "host/technologies/dbf/cdx/KeyEncoder.h"
#include "host/technologies/dbf/cdx/KeyParts.h"
#include "portable/text/CodePage.h"

namespace zu::dbf::cdx {

/// How a search runs: over a stretch of the tree, and with what to test on each record there.
class SeekPlan {
public:
    /// Errors: InvalidArgument (more criteria than parts), TypeMismatch. `parts` must outlive the plan.
    SeekPlan(const std::vector<technologies::KeyCriterion>& criteria, const std::vector<PartForm>& parts,
             const KeyEncoder& encoder, const text::CodePage& codePage);

    /// No record can meet the criteria.
    bool isEmpty() const noexcept { return isEmpty_; }
    const KeyBounds& bounds() const noexcept { return bounds_; }
    /// There is more to test than the bounds of the key.
    bool hasTests() const noexcept { return !tests_.empty(); }
    bool Test(const expression::Row& row);

private:
    /// A part behind the stretch's common prefix.
    struct PartTest {
        const PartForm* part;
        std::string text;
        bool exact;
    };

    void PlanSingle(const technologies::KeyCriterion& criterion, const KeyEncoder& encoder);
    void PlanTexts(const std::vector<technologies::KeyCriterion>& criteria,
                   const std::vector<PartForm>& parts, const KeyForm& form, const text::CodePage& codePage);

    bool isEmpty_ = false;
    KeyBounds bounds_;
    std::vector<PartTest> tests_;
    expression::Result value_;
};

}  // namespace zu::dbf::cdx
