// SPDX-License-Identifier: BSD-3-Clause
// What most sources include, compiled once for each library; none relies on getting it from here.
#pragma once

#include <QByteArray>
#include <QColor>
#include <QDataStream>
#include <QFileInfo>
#include <QGraphicsScene>
#include <QImage>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QPainter>
#include <QPainterPath>
#include <QRegularExpression>
#include <QStringList>
#include <QStyleOptionGraphicsItem>
#include <QTextDocument>
#include <QVariant>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>
