#include "sidebyside/gitlinediff.h"

#include "platform/runtimeerror.h"

#include <git2.h>
#include <mutex>

namespace pv {

namespace {

void initialiseLibrary() {
    // Kept for the life of the program; libgit2 counts its users and the
    // program never needs it shut down.
    static std::once_flag once;
    std::call_once(once, [] { git_libgit2_init(); });
}

// Hunk headers number lines from 1, except that an empty side names the line
// after which the other side's lines stand.
size_t firstIndex(int start, int count) {
    return count == 0 ? static_cast<size_t>(start) : static_cast<size_t>(start - 1);
}

int onHunk(const git_diff_delta*, const git_diff_hunk* hunk, void* payload) {
    auto* hunks = static_cast<std::vector<DiffHunk>*>(payload);
    hunks->push_back(DiffHunk{
        firstIndex(hunk->old_start, hunk->old_lines), static_cast<size_t>(hunk->old_lines),
        firstIndex(hunk->new_start, hunk->new_lines), static_cast<size_t>(hunk->new_lines)});
    return 0;
}

} // namespace

std::vector<DiffHunk> diffLines(std::string_view left, std::string_view right,
                                DiffAlgorithm algorithm) {
    initialiseLibrary();
    git_diff_options options = GIT_DIFF_OPTIONS_INIT;
    // Text however the bytes look (NUL bytes never get here: they end lines),
    // no size limit, and no context lines so that every hunk is exactly a change.
    options.flags = GIT_DIFF_FORCE_TEXT;
    if (algorithm == DiffAlgorithm::Patience)
        options.flags |= GIT_DIFF_PATIENCE;
    else if (algorithm == DiffAlgorithm::Minimal)
        options.flags |= GIT_DIFF_MINIMAL;
    options.context_lines = 0;
    options.interhunk_lines = 0;
    options.max_size = -1;
    std::vector<DiffHunk> hunks;
    // A null buffer would stand for a missing file, not an empty one.
    const int rc = git_diff_buffers(left.empty() ? "" : left.data(), left.size(), nullptr,
                                    right.empty() ? "" : right.data(), right.size(), nullptr,
                                    &options, nullptr, nullptr, onHunk, nullptr, &hunks);
    if (rc < 0) {
        const git_error* e = git_error_last();
        throw RuntimeError(rc, e && e->message ? e->message : "the diff failed");
    }
    return hunks;
}

} // namespace pv
