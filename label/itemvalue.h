// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QJsonValue>
#include <QMetaType>
#include <QString>
#include <QVariant>

/// A value of an item's JSON object on its way to a Qt property, which takes anything without complaint.
struct ItemValue
{
    /// Ready for the property; invalid if there is a problem.
    QVariant value;
    QString problem;
    QString advice;

    /// key tells a colour, a size or a transform from any other text, number or list.
    [[nodiscard]] static ItemValue from(const QJsonValue &json, const QString &key, QMetaType type);
    /// What is wrong with a number of an item, empty if nothing is.
    [[nodiscard]] static QString numberProblem(double number, const QString &key);
    /// What is wrong with a text of an item, which would lose something if it were taken.
    [[nodiscard]] static QString textProblem(const QString &text, const QString &key);
};
