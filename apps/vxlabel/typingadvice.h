// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

#include <CLI/App.hpp>
#include <CLI/Error.hpp>

/// A value that an option does not take, with what was probably meant.
class MistypedValue : public CLI::ParseError
{
public:
    MistypedValue(const std::string &what, const QString &advice)
        : ParseError("MistypedValue", what, int(CLI::ExitCodes::ValidationError))
        , m_advice(advice)
    {
    }

    /// Empty if nothing is near.
    [[nodiscard]] const QString &advice() const { return m_advice; }

private:
    QString m_advice;
};

/// Advice for what people mistype.
namespace TypingAdvice {

/// "did you mean \"--output\"?": the only one of the words that begins like that, or else the nearest. Empty
/// if there is none.
[[nodiscard]] QString meant(const QString &mistyped, const QStringList &words);

/// Lets every option that takes only some values, of the program and of its commands, refuse others with a
/// MistypedValue.
void adviseOnValues(CLI::App &program);

} // namespace TypingAdvice
