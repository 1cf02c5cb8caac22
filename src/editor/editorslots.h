#pragma once
// The table of editor windows: slots numbered from 1, each free ("closed") or
// holding one window, with a flag that says whether its text changed since the
// last load or save. Free slots are reused before the table grows.

#include <vector>

namespace pv {

class EditorSlots {
  public:
    // The first free slot from 1 on, or a new one at the end; it is then in use
    // and unmodified.
    int TakeEditorSlot();
    bool AnyEditorOpen() const;

    // The window of a slot unloaded: the slot is free again.
    void release(int slot);
    bool isOpen(int slot) const;

    void setModified(int slot, bool modified);
    bool isModified(int slot) const;

  private:
    struct Slot {
        bool closed = true;
        bool modified = false;
    };
    bool valid(int slot) const { return slot >= 1 && slot < int(m_slots.size()); }

    std::vector<Slot> m_slots = std::vector<Slot>(1); // index 0 is never used
};

} // namespace pv
