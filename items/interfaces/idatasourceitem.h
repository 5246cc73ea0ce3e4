// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QString>
#include <QVariant>

/// The binding of an item to a field of a datasource, and the data that it shows.
class VX_EXPORT IDatasourceItem
{
public:
    virtual ~IDatasourceItem();

    virtual QVariant getItemData() const = 0;
    virtual int getItemDatasourceID() const = 0;
    virtual QString getItemDatasourceField() const = 0;
    virtual bool isDatasourceConnected() const = 0;
    virtual void setItemData(const QVariant &data) = 0;
    virtual void setItemDatasourceID(int id) = 0;
    virtual void setItemDatasourceField(const QString &field) = 0;
    /// A signal in every class that has it.
    virtual void itemDataChanged(QVariant data, int datasourceId, QString field) = 0;
};
