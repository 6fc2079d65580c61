#include "ui/state/undo_history.h"

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "base/text.h"

namespace verbatix {

namespace {

using Change = UndoStep::Change;

bool Holds(const ListEntry& entry, const SharedContent& content) {
    // A place that has never been used and a blank one are alike.
    if (!content) return IsBlank(entry);
    return entry.keyCode == content->keyCode && entry.modifier == content->modifier &&
           entry.order == content->order && content->label == entry.label && content->text == entry.text;
}

SharedContent ContentOf(const ListEntry& entry) {
    return std::make_shared<const EntryContent>(
        EntryContent{entry.text, entry.label, entry.keyCode, entry.modifier, entry.order});
}

bool IsSame(const SharedContent& a, const SharedContent& b) {
    return a == b || (a && b && *a == *b);
}

std::size_t BytesOf(const SharedContent& content) {
    return content ? sizeof *content + (content->text.size() + content->label.size()) * sizeof(wchar_t) : 0;
}

// The entries that differ; what they are now is still to be filled in.
std::vector<Change> ChangesOf(const UndoHistory& history, const EntryList& list) {
    std::vector<Change> changes;
    for (const auto& [position, slot] : list) {
        const auto found = history.known.find(position);
        const SharedContent before = found == history.known.end() ? nullptr : found->second;
        if (!Holds(slot.current, before)) changes.push_back({position, before, nullptr});
    }
    return changes;
}

// A move across the list changes most of it, and every record is one of those that were there before. Those
// are used again. Returns the bytes of the others.
std::size_t ShareContents(std::vector<Change>& changes, const EntryList& list) {
    std::unordered_multimap<std::size_t, SharedContent> before;
    const auto key = [](std::wstring_view text) { return std::hash<std::wstring_view>()(text); };
    std::size_t bytes = changes.size() * sizeof(Change);
    for (const Change& change : changes) {
        if (change.before) before.emplace(key(change.before->text), change.before);
    }
    for (Change& change : changes) {
        const ListEntry& entry = list.at(change.position).current;
        const auto [first, last] = before.equal_range(key(entry.text));
        const auto same =
            std::find_if(first, last, [&](const auto& row) { return Holds(entry, row.second); });
        change.after = same == last ? ContentOf(entry) : same->second;
        if (same == last) bytes += BytesOf(change.after) + BytesOf(change.before);
    }
    return bytes;
}

void ForgetOldest(UndoHistory& history) {
    std::size_t bytes = 0;
    std::size_t kept = 0;
    while (kept < history.steps.size() && kept < kMostUndoSteps) {
        bytes += history.steps[history.steps.size() - 1 - kept].bytes;
        // The last one always, however large it is.
        if (kept > 0 && bytes > kMostUndoBytes) break;
        ++kept;
    }
    history.steps.erase(history.steps.begin(), history.steps.end() - static_cast<std::ptrdiff_t>(kept));
}

void AddTyped(UndoStep::Typed& typed, std::wstring_view before, std::wstring_view after) {
    const std::size_t shorter = std::min(before.size(), after.size());
    std::size_t start = 0;
    while (start < shorter && before[start] == after[start]) ++start;
    std::size_t end = 0;
    while (end < shorter - start && before[before.size() - 1 - end] == after[after.size() - 1 - end]) ++end;
    typed.added += after.size() - start - end;
    typed.removed += before.size() - start - end;
}

// Nothing where a hotkey was chosen.
UndoStep::Typed TypedIn(const std::vector<Change>& changes) {
    UndoStep::Typed typed;
    for (const Change& change : changes) {
        if (!change.before || !change.after) continue;
        AddTyped(typed, change.before->text, change.after->text);
        AddTyped(typed, change.before->label, change.after->label);
    }
    return typed;
}

bool IsByItself(const UndoStep::Typed& typed) {
    return typed.added + typed.removed > kMostTypedAtOnce;
}

// What has been typed and is deleted then is in a step to come back from; so is what was deleted first.
bool TurnsRound(const UndoStep::Typed& before, const UndoStep::Typed& typed) {
    return before.added > 0 ? typed.removed > 0 : before.removed > 0 && typed.added > 0;
}

bool GoesOn(const UndoHistory& history, const UndoStep& step) {
    if (!step.action.isTyping || history.isSealed || history.steps.empty()) return false;
    const UndoStep& last = history.steps.back();
    const std::size_t all = last.typed.added + last.typed.removed + step.typed.added + step.typed.removed;
    return last.action.isTyping && last.action.act == step.action.act &&
           last.action.after == step.action.before && step.time - last.time <= kTypingPauseMilliseconds &&
           step.time - last.begun <= kTypingMilliseconds && all <= kMostTyped && !IsByItself(step.typed) &&
           !TurnsRound(last.typed, step.typed);
}

// Takes a step into the one before it.
void Join(UndoStep& step, UndoStep& next) {
    step.action.subject = std::move(next.action.subject);
    step.time = next.time;
    step.typed.added += next.typed.added;
    step.typed.removed += next.typed.removed;
    for (Change& change : next.changes) {
        const auto found = std::find_if(step.changes.begin(), step.changes.end(),
                                        [&](const Change& row) { return row.position == change.position; });
        if (found == step.changes.end()) {
            step.changes.push_back(std::move(change));
        } else {
            found->after = std::move(change.after);
        }
    }
    std::erase_if(step.changes, [](const Change& row) { return IsSame(row.before, row.after); });
}

void Put(ListEntry& entry, const SharedContent& content) {
    static const EntryContent kBlank;
    const EntryContent& now = content ? *content : kBlank;
    if (now.text != entry.text) entry.kind = -1;
    CopyText(entry.text, now.text, kTextLimit);
    CopyText(entry.label, now.label, kLabelLimit);
    entry.keyCode = now.keyCode;
    entry.modifier = now.modifier;
    // A place that nobody had used yet keeps its place in the menu for the next entry.
    if (content) entry.order = now.order;
}

// Sets the entries of a step from one side of it to the other.
bool Carry(UndoHistory& history, EntryList& list, const UndoStep& step, SharedContent Change::*from,
           SharedContent Change::*to) {
    const auto fits = [&](const Change& change) {
        const auto found = list.find(change.position);
        return found != list.end() && Holds(found->second.current, change.*from);
    };
    if (!std::all_of(step.changes.begin(), step.changes.end(), fits)) return false;
    for (const Change& change : step.changes) {
        Put(list.at(change.position).current, change.*to);
        history.known[change.position] = change.*to;
    }
    return true;
}

}  // namespace

void ForgetSteps(UndoHistory& history, const EntryList& list) {
    history = {};
    for (const auto& [position, slot] : list) history.known[position] = ContentOf(slot.current);
}

bool NoteStep(UndoHistory& history, const EntryList& list, Action action, std::uint64_t now) {
    std::vector<Change> changes = ChangesOf(history, list);
    if (changes.empty()) return false;
    const std::size_t bytes = ShareContents(changes, list);
    for (const Change& change : changes) history.known[change.position] = change.after;
    history.steps.resize(history.done);
    const UndoStep::Typed typed = TypedIn(changes);
    UndoStep step = {std::move(action), std::move(changes), now, bytes, typed, now};
    if (GoesOn(history, step)) {
        UndoStep& last = history.steps.back();
        Join(last, step);
        if (last.changes.empty()) history.steps.pop_back();
    } else {
        history.steps.push_back(std::move(step));
        ForgetOldest(history);
    }
    history.done = history.steps.size();
    // Nor does anything go on in what was put in.
    history.isSealed = IsByItself(typed);
    return true;
}

void SealStep(UndoHistory& history) {
    history.isSealed = true;
}

const Action* NextUndo(const UndoHistory& history) {
    return history.done == 0 ? nullptr : &history.steps[history.done - 1].action;
}

const Action* NextRedo(const UndoHistory& history) {
    return history.done == history.steps.size() ? nullptr : &history.steps[history.done].action;
}

std::optional<Action> UndoStepIn(UndoHistory& history, EntryList& list) {
    if (!NextUndo(history)) return std::nullopt;
    const UndoStep& step = history.steps[history.done - 1];
    if (!Carry(history, list, step, &Change::after, &Change::before)) {
        ForgetSteps(history, list);
        return std::nullopt;
    }
    --history.done;
    history.isSealed = true;
    return step.action;
}

std::optional<Action> RedoStepIn(UndoHistory& history, EntryList& list) {
    if (!NextRedo(history)) return std::nullopt;
    const UndoStep& step = history.steps[history.done];
    if (!Carry(history, list, step, &Change::before, &Change::after)) {
        ForgetSteps(history, list);
        return std::nullopt;
    }
    ++history.done;
    history.isSealed = true;
    return step.action;
}

}  // namespace verbatix
