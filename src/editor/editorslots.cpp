#include "editor/editorslots.h"

#include <cstddef>

namespace pv {

int EditorSlots::TakeEditorSlot() {
    int slot = 1;
    while (slot < int(m_slots.size()) && !m_slots[std::size_t(slot)].closed)
        ++slot;
    if (slot == int(m_slots.size()))
        m_slots.emplace_back();
    m_slots[std::size_t(slot)] = Slot{false, false};
    return slot;
}

bool EditorSlots::AnyEditorOpen() const {
    for (std::size_t i = 1; i < m_slots.size(); ++i)
        if (!m_slots[i].closed)
            return true;
    return false;
}

void EditorSlots::release(int slot) {
    if (valid(slot))
        m_slots[std::size_t(slot)] = Slot{};
}

bool EditorSlots::isOpen(int slot) const {
    return valid(slot) && !m_slots[std::size_t(slot)].closed;
}

void EditorSlots::setModified(int slot, bool modified) {
    if (isOpen(slot))
        m_slots[std::size_t(slot)].modified = modified;
}

bool EditorSlots::isModified(int slot) const {
    return isOpen(slot) && m_slots[std::size_t(slot)].modified;
}

} // namespace pv
