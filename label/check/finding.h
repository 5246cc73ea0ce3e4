// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"
#include "label/vxlabelexport.h"

#include <QLatin1String>
#include <QList>

/// Something that a check has found.
struct Finding
{
    enum Severity {
        Warning, ///< it prints, but a person should look at it
        Error ///< it cannot be printed, or must not be
    };

    Severity severity = Error;
    QLatin1String rule; ///< its short name: "text-overflow"
    Problem problem; ///< where is the JSON pointer of an item, or what a source of rows tells
};

using Findings = QList<Finding>;
