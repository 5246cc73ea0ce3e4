// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgreferences.h"

#include <algorithm>

/// Adds the parts up, each once however often it is referred to; with a stack of its own. Names come behind
/// the parts.
class SvgReferences::Walk
{
public:
    explicit Walk(const SvgReferences &references)
        : m_parts(references.m_parts)
        , m_named(references.m_named)
        , m_states(m_parts.size() + m_named.size(), State::New)
        , m_totals(m_states.size())
    {
    }

    std::optional<Total> total()
    {
        push(0);
        while (!m_stack.isEmpty() && !m_isCyclic) {
            const qsizetype node = m_stack.last();
            if (m_states[node] == State::New) {
                m_states[node] = State::Begun;
                pushNeeded(node);
                continue;
            }
            m_stack.removeLast();
            if (m_states[node] == State::Begun)
                addUp(node);
        }
        return m_isCyclic ? std::nullopt : std::optional(m_totals[0]);
    }

private:
    enum class State { New, Begun, Done };

    void push(qsizetype node)
    {
        if (m_states[node] == State::New)
            m_stack.append(node);
        // What is begun waits for the one that needs it now.
        m_isCyclic = m_isCyclic || m_states[node] == State::Begun;
    }

    void pushNeeded(qsizetype node)
    {
        const bool isName = node >= m_parts.size();
        for (const int part : isName ? m_named[node - m_parts.size()] : m_parts[node].parts)
            push(part);
        if (isName)
            return;
        for (const Reference &reference : m_parts[node].references)
            push(m_parts.size() + reference.name);
    }

    void addUp(qsizetype node)
    {
        m_totals[node]
            = node < m_parts.size() ? totalOf(m_parts[node]) : totalOf(m_named[node - m_parts.size()]);
        m_states[node] = State::Done;
    }

    Total totalOf(const Part &own) const
    {
        Total total { double(own.elements), double(own.levels), own.effort, 0.0 };
        for (const int inner : own.parts) {
            total.elements += m_totals[inner].elements;
            total.effort += m_totals[inner].effort;
            total.levels = std::max(total.levels, m_parts[inner].begin - own.begin + m_totals[inner].levels);
        }
        for (const Reference &reference : own.references) {
            const Total &target = m_totals[m_parts.size() + reference.name];
            total.elements += target.elements;
            // Lengths, and with them the pixels to be visited, grow with the scale twice.
            total.effort
                += std::max(target.effort, reference.scale * reference.scale * target.effortAtScaleOne);
            total.levels = std::max(total.levels, reference.level - own.begin + target.levels);
        }
        total.effortAtScaleOne = total.effort / (own.scale * own.scale);
        return total;
    }

    /// Of several elements with one id the renderer may take any.
    Total totalOf(const QList<int> &named) const
    {
        Total most;
        for (const int part : named) {
            most.elements = std::max(most.elements, m_totals[part].elements);
            most.levels = std::max(most.levels, m_totals[part].levels);
            most.effort = std::max(most.effort, m_totals[part].effort);
            most.effortAtScaleOne = std::max(most.effortAtScaleOne, m_totals[part].effortAtScaleOne);
        }
        return most;
    }

    const QList<Part> &m_parts;
    const QList<QList<int>> &m_named;
    QList<State> m_states;
    QList<Total> m_totals;
    QList<qsizetype> m_stack;
    bool m_isCyclic = false;
};

int SvgReferences::nameOf(const QString &id)
{
    const auto known = m_names.constFind(id);
    if (known != m_names.cend())
        return known.value();
    m_named.append(QList<int>());
    return m_names.insert(id, int(m_named.size()) - 1).value();
}

void SvgReferences::beginElement(const QString &id, double scale)
{
    m_isPart.append(!id.isEmpty());
    const int level = int(m_isPart.size());
    if (!id.isEmpty()) {
        const int part = int(m_parts.size());
        m_parts[m_open.last()].parts.append(part);
        m_parts.append(Part { .begin = level, .scale = scale });
        m_named[nameOf(id)].append(part);
        m_open.append(part);
    }
    Part &part = m_parts[m_open.last()];
    ++part.elements;
    part.levels = std::max(part.levels, level - part.begin + 1);
}

void SvgReferences::refer(const QString &id, double scale)
{
    m_hasReferences = true;
    m_parts[m_open.last()].references.append({ nameOf(id), int(m_isPart.size()) + 1, scale });
}

void SvgReferences::endElement()
{
    if (m_isPart.takeLast())
        m_open.removeLast();
}

std::optional<SvgReferences::Total> SvgReferences::total() const
{
    return Walk(*this).total();
}
