// SPDX-License-Identifier: BSD-3-Clause
// What most tests include, compiled once for all of them; none relies on getting it from here.
#pragma once

#include <QApplication>
#include <QFile>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsSvgItem>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QStyleOptionGraphicsItem>
#include <QTest>
#include <QTextDocument>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <vector>
