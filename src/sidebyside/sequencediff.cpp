#include "sidebyside/sequencediff.h"

#include <dtl/dtl.hpp>

namespace pv {

namespace {

struct OverBudget {};

// dtl compares through this; counting here is what bounds the work. (dtl keeps
// the comparator by value and calls it through a const member.)
class BudgetedCompare : public dtl::Compare<std::uint32_t> {
  public:
    BudgetedCompare() = default;
    explicit BudgetedCompare(std::uint64_t* left) : m_left(left) {}
    bool impl(const std::uint32_t& a, const std::uint32_t& b) const override {
        if ((*m_left)-- == 0)
            throw OverBudget();
        return a == b;
    }

  private:
    std::uint64_t* m_left = nullptr;
};

} // namespace

SequenceDiff diffSequences(const std::vector<std::uint32_t>& left,
                           const std::vector<std::uint32_t>& right, std::uint64_t budget) {
    size_t head = 0;
    while (head < left.size() && head < right.size() && left[head] == right[head])
        ++head;
    size_t tail = 0;
    while (tail < left.size() - head && tail < right.size() - head &&
           left[left.size() - 1 - tail] == right[right.size() - 1 - tail])
        ++tail;
    const std::vector<std::uint32_t> a(left.begin() + std::ptrdiff_t(head),
                                       left.end() - std::ptrdiff_t(tail));
    const std::vector<std::uint32_t> b(right.begin() + std::ptrdiff_t(head),
                                       right.end() - std::ptrdiff_t(tail));
    if (a.empty() && b.empty())
        return {};
    const SequenceDiff oneBlock{{DiffHunk{head, a.size(), head, b.size()}}, true};
    if (a.empty() || b.empty())
        return oneBlock;

    std::uint64_t comparisonsLeft = budget;
    dtl::Diff<std::uint32_t, std::vector<std::uint32_t>, BudgetedCompare> diff(
        a, b, BudgetedCompare(&comparisonsLeft));
    diff.onHuge();
    try {
        diff.compose();
    } catch (const OverBudget&) {
        // dtl's own work buffer is lost with the unwinding (it holds it in a raw
        // pointer); a few bytes per line, once per window.
        return SequenceDiff{oneBlock.hunks, false};
    }

    SequenceDiff out;
    std::vector<DiffHunk>& hunks = out.hunks;
    size_t l = head, r = head;
    bool open = false;
    for (const auto& [element, info] : diff.getSes().getSequence()) {
        if (info.type == dtl::SES_COMMON) {
            open = false;
            ++l, ++r;
            continue;
        }
        if (!open)
            hunks.push_back(DiffHunk{l, 0, r, 0});
        open = true;
        if (info.type == dtl::SES_DELETE)
            ++hunks.back().leftCount, ++l;
        else
            ++hunks.back().rightCount, ++r;
    }
    return out;
}

} // namespace pv
