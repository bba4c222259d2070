/// \file
/// What a checker found, asked for.
#pragma once

#include "tools/check/Finding.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace tamor::test
{
/// Whether there is an error among the findings, not warnings alone.
inline bool hasError(const std::vector<check::Finding>& findings)
{
    return std::any_of(findings.begin(), findings.end(), [](const check::Finding& finding) {
        return finding.code->severity == check::Severity::error;
    });
}

/// Whether one of them has the code of this name.
inline bool hasCode(const std::vector<check::Finding>& findings, std::string_view code)
{
    return std::any_of(findings.begin(), findings.end(),
                       [=](const check::Finding& finding) { return finding.code->name == code; });
}
} // namespace tamor::test
