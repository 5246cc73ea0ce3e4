// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <optional>

class ProblemLog;

/// The members of one JSON object, taken by name. Those that are missing, of a wrong type or unknown are
/// problems.
class JsonMembers
{
public:
    /// pointer is the JSON pointer of the object.
    JsonMembers(const QJsonObject &object, const QString &pointer, ProblemLog &log)
        : m_object(object)
        , m_pointer(pointer)
        , m_log(log)
    {
    }

    [[nodiscard]] std::optional<double> number(const QString &key);
    /// A whole number from -most to most.
    [[nodiscard]] std::optional<qint64> integer(const QString &key, qint64 most);
    [[nodiscard]] std::optional<QString> text(const QString &key);
    [[nodiscard]] std::optional<QColor> color(const QString &key);
    [[nodiscard]] std::optional<QJsonArray> array(const QString &key);
    [[nodiscard]] std::optional<QJsonObject> object(const QString &key);

    // Those that may be missing, which is no problem
    [[nodiscard]] std::optional<QString> optionalText(const QString &key);
    [[nodiscard]] std::optional<qint64> optionalInteger(const QString &key, qint64 most);
    [[nodiscard]] std::optional<QJsonArray> optionalArray(const QString &key);

    /// Reports every member that was not asked for.
    void refuseOthers();

    /// Reports a member that nothing is known about, with the known one that may have been meant.
    static void refuse(const QString &key, const QStringList &known, const QString &pointer, ProblemLog &log);
    /// "a number", "text" …
    [[nodiscard]] static QString typeName(QJsonValue::Type type);

private:
    /// Whether there is one, of whatever type; it is known from now on.
    [[nodiscard]] bool mayHave(const QString &key);
    [[nodiscard]] bool has(const QString &key, QJsonValue::Type type);

    QJsonObject m_object;
    QString m_pointer;
    ProblemLog &m_log;
    QStringList m_known;
};
