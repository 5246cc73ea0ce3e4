// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/contentbudget.h"
#include "label/documentfile.h"
#include "label/jsonmembers.h"

#include <QJsonObject>

class ProblemLog;

/// Makes a document of a JSON object and reports everything that keeps it from being one.
class JsonReader
{
public:
    inline static const QString formatName = QStringLiteral("vxlabel");

    JsonReader(const QJsonObject &root, BrokenItems broken, ProblemLog &log);

    [[nodiscard]] std::optional<LabelDocument> read();

private:
    [[nodiscard]] bool readFormat();
    [[nodiscard]] bool readVersion();
    void readHead();
    void readPage();
    void readInks();
    void readDither();
    [[nodiscard]] Ink readInk(const QJsonValue &json, const QString &pointer);
    void readItems(const QJsonArray &items);
    [[nodiscard]] std::vector<std::unique_ptr<Item>> itemsOf(
        const QJsonArray &array, const QString &pointer, int level);
    [[nodiscard]] std::unique_ptr<Item> itemOf(const QJsonValue &json, const QString &pointer, int level);
    [[nodiscard]] std::optional<std::vector<std::unique_ptr<Item>>> membersOf(
        const QJsonObject &object, const QString &pointer, int level);

    JsonMembers m_root;
    BrokenItems m_broken;
    ProblemLog &m_log;
    LabelDocument m_document;
    ContentBudget m_budget;
    unsigned int m_version = 0;
};
