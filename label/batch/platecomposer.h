// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/batch/dotcanvas.h"
#include "label/batch/itemreports.h"
#include "label/platescenes.h"
#include "label/separation.h"

#include <QImage>

#include <memory>
#include <optional>
#include <vector>

/// Separates a document again and again, of which only some items change: the plates of the others are
/// rendered once, and the dots of those that change are put on them. What comes of it is what separate()
/// gives, dot by dot. It is what separate() gives in deed where an item that changes meets another one above
/// it, is a picture, is translucent, or where the page is too large for one piece.
class VX_LABEL_EXPORT PlateComposer
{
public:
    /// The document has no containers and outlives the composer; only its items in these places, in
    /// ascending order, may change, in all but their class, z value and visibility. Without layers in the
    /// options.
    PlateComposer(
        const LabelDocument &document, std::vector<std::size_t> changing, const SeparationOptions &options);
    ~PlateComposer();
    Q_DISABLE_COPY_MOVE(PlateComposer)

    /// The document as it is now; see separate().
    [[nodiscard]] std::optional<Separation> separate(Problems &problems);
    /// The same but for the plates, of which there are none.
    [[nodiscard]] std::optional<Separation> check(Problems &problems);
    /// How many separations were composed.
    [[nodiscard]] qint64 composed() const { return m_composed; }

private:
    void prepare();
    [[nodiscard]] bool canCompose() const;
    [[nodiscard]] bool prepareFixed();
    void prepareTaken();
    [[nodiscard]] std::vector<std::size_t> fixedAboveChanging() const;
    void takeRoomOf(const Item &picture);
    [[nodiscard]] bool liesUnderPicture(std::size_t item) const;
    template <typename Add> [[nodiscard]] bool paint(const std::vector<std::size_t> &items, Add add);
    void paintInk(const std::vector<std::size_t> &items, qsizetype ink);
    [[nodiscard]] bool compose(std::vector<Plate> &plates);
    [[nodiscard]] bool putChangingOn(std::vector<Plate> &plates);

    const LabelDocument &m_document;
    std::vector<std::size_t> m_changing; ///< in ascending order
    SeparationOptions m_options;
    PlateScenes m_scenes;
    ItemReports m_reports;
    bool m_isPrepared = false;
    bool m_isComposing = false;
    qint64 m_composed = 0;
    qint64 m_others = 0; ///< that could not be composed
    std::vector<Plate> m_fixed; ///< the plates of what does not change
    QImage m_taken; ///< a bit where such things lie above others that change, on any plate
    std::vector<QRectF> m_rooms; ///< of the pictures among them, in units of the document
    std::unique_ptr<DotCanvas> m_canvas;
};
