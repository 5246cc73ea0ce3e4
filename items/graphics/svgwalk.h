// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QString>

class QDomNode;

/// Looks in a drawing for pictures that would not print reliably: those that lie elsewhere, and large ones.
namespace SvgWalk {

/// The first message about the node, its later siblings and all below them; empty if there is none.
[[nodiscard]] QByteArray problemOf(const QDomNode &node);

/// Whether the text may hold elements named "image". Without any there is no need to make a tree of it.
[[nodiscard]] bool mayHaveImages(const QByteArray &text);

} // namespace SvgWalk
