// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QHash>
#include <QImage>
#include <QTextDocument>
#include <QUrl>

/// The only kind of document that text items use: it opens no file and no address, however a text spells the
/// reference. Pictures in "data:" addresses are shown within a budget; any other picture is an empty one of a
/// single pixel.
class VX_EXPORT SafeTextDocument : public QTextDocument
{
    Q_OBJECT

public:
    explicit SafeTextDocument(QObject *parent = nullptr);

    /// Before another text replaces the present one: each has the whole budget.
    void forgetPictures();

protected:
    QVariant loadResource(int type, const QUrl &name) override;

private:
    QImage decoded(const QUrl &url);

    QHash<QUrl, QImage> m_pictures;
    qint64 m_decodedPixels = 0;
};
