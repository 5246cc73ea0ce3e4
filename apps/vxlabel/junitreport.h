// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "apps/vxlabel/checkreport.h"

#include <QTemporaryFile>
#include <QXmlStreamWriter>

/// XML in the form of JUnit, for systems that build and test: a test case for the label, and one for each
/// row. Errors are failures, warnings what the test has printed.
class JunitReport : public CheckReport
{
public:
    explicit JunitReport(const Options &options);

protected:
    void tellLabel(const Findings &findings) override;
    void tellRow(const CheckedRow &row) override;
    void tellRest() override;

private:
    void writeCase(const QString &name, const Findings &findings);
    void copyCases();

    /// The head tells how many cases there are, and the findings at the label come at the end as well: the
    /// cases of rows wait on the disk.
    QTemporaryFile m_cases;
    QXmlStreamWriter m_writer;
    Findings m_ofLabel;
    qint64 m_failures = 0;
};
