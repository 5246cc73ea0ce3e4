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

    /// How many bytes the pictures take that the text has shown.
    qint64 pictureMemory() const;

    /// Until the last of as many calls of resumeLayout(), nothing is laid out.
    void pauseLayout();
    /// A text that Qt's layout would not come to an end with is kept, but not shown.
    void resumeLayout();

protected:
    QVariant loadResource(int type, const QUrl &name) override;

private:
    QImage decoded(const QUrl &url);
    [[nodiscard]] bool canBeLaidOut() const;
    [[nodiscard]] double greatestUsedFont() const;
    /// At most as high as this with a font size in pixels.
    [[nodiscard]] double greatestHeight(double fontSize) const;

    QHash<QUrl, QImage> m_pictures;
    qint64 m_decodedPixels = 0;
    int m_pauses = 0;
};
