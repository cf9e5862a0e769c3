#include "platform/ContentLists.h"
#include "platform/ContentModel.h"

#include <algorithm>
#include <deque>
#include <utility>

namespace tv {

using content::addOnce;
using content::holds;

bool ContentWalk::childInAnyOrder(ChildName child) {
    if (seen_.empty()) {
        seen_.assign(model_->names_.size(), false);
    }
    if (child >= seen_.size() || seen_[child]) {
        return false;
    }
    seen_[child] = true;
    return true;
}

// A counted name leads back to itself only as often as its limit allows.
bool ContentWalk::isOpen(ContentModel::State from, ContentModel::State to) const {
    const std::uint32_t limit = model_->limits_[to];
    return from != to || limit == 0 || run_ < limit;
}

ContentModel::State ContentWalk::step(ContentModel::State from, ChildName child) const {
    const ContentModel::State next = model_->step(from, child);
    return next != ContentModel::none && isOpen(from, next) ? next : ContentModel::none;
}

void ContentWalk::count(ChildName child) {
    run_ = child == last_ ? run_ + 1 : 1;
    last_ = child;
    if (child < read_.size()) {
        read_.set(child);
    }
}

bool ContentWalk::advance(ChildName child) {
    if (child == unknownChild) {
        return false;
    }
    if (recovery_) {
        return recover(child);
    }
    const ContentModel::State next = step(state_, child);
    if (next == ContentModel::none) {
        return false;
    }
    state_ = next;
    count(child);
    return true;
}

bool ContentWalk::child(ChildName child, const std::vector<ChildName>& alsoAs) {
    if (model_->anyOrder_) {
        return childInAnyOrder(child);
    }
    const bool isAllowed =
        advance(child) ||
        std::any_of(alsoAs.begin(), alsoAs.end(), [this](ChildName wildcard) { return advance(wildcard); });
    if (isAllowed || comesLate(child)) {
        return true;
    }
    if (!recovery_) {
        recovery_ = std::make_unique<Recovery>();
        recovery_->ways.push_back(state_);
    }
    branch(child == unknownChild && !alsoAs.empty() ? alsoAs.front() : child);
    return false;
}

// True when the child goes on along one of the ways that are still open.
bool ContentWalk::recover(ChildName child) {
    std::vector<ContentModel::State> ways;
    for (const ContentModel::State way : recovery_->ways) {
        const ContentModel::State next = step(way, child);
        if (next != ContentModel::none) {
            addOnce(ways, next);
        }
    }
    if (ways.empty() && !holds(recovery_->skipped, child)) {
        ways = overMisplaced(child);
    }
    if (ways.empty()) {
        return false;
    }
    recovery_->ways = std::move(ways);
    count(child);
    return true;
}

// A child that an earlier fault took as missing comes after all: the other half of that fault.
bool ContentWalk::comesLate(ChildName child) {
    if (!recovery_) {
        return false;
    }
    const auto late = std::find(recovery_->skipped.begin(), recovery_->skipped.end(), child);
    if (late == recovery_->skipped.end()) {
        return false;
    }
    recovery_->skipped.erase(late);
    return true;
}

// States that read the child behind nothing but children that were told as misplaced before their place.
std::vector<ContentModel::State> ContentWalk::overMisplaced(ChildName child) const {
    std::vector<ContentModel::State> found;
    std::vector<ContentModel::State> open = recovery_->ways;
    std::vector<ContentModel::State> seen = open;
    while (!open.empty()) {
        const ContentModel::State state = open.back();
        open.pop_back();
        for (const ContentModel::State next : model_->follow_[state]) {
            if (!isOpen(state, next)) {
                continue;
            }
            if (model_->positions_[next - 1] == child) {
                addOnce(found, next);
            } else if (holds(recovery_->misplaced, model_->positions_[next - 1]) && !holds(seen, next)) {
                seen.push_back(next);
                open.push_back(next);
            }
        }
    }
    return found;
}

// A fault: opens the ways on which the children behind it could make sense.
void ContentWalk::branch(ChildName child) {
    const std::vector<ContentModel::State> before = recovery_->ways; // the child is one too many: they stay
    if (child == unknownChild) {
        for (const ContentModel::State way : before) {
            for (const ContentModel::State next : model_->follow_[way]) {
                addOnce(recovery_->ways, next); // it stands for the child that was due
            }
        }
        return;
    }
    addOnce(recovery_->misplaced, child);
    if (!branchAhead(child, before) && child < read_.size() && !read_.test(child)) {
        branchBack(child);
    }
}

// The children before it are missing: goes on at the nearest place ahead that reads it.
bool ContentWalk::branchAhead(ChildName child, const std::vector<ContentModel::State>& before) {
    std::deque<ContentModel::State> open;
    std::vector<bool> seen(model_->follow_.size(), false);
    std::vector<ContentModel::State> parent(model_->follow_.size(), ContentModel::none);
    for (const ContentModel::State way : before) {
        open.push_back(way);
        seen[way] = true;
    }
    while (!open.empty()) {
        const ContentModel::State state = open.front();
        open.pop_front();
        for (const ContentModel::State next : model_->follow_[state]) {
            if (model_->positions_[next - 1] == child && isOpen(state, next)) {
                addOnce(recovery_->ways, next);
                for (ContentModel::State s = state; s != ContentModel::none && s != 0 && !holds(before, s);
                     s = parent[s]) {
                    addOnce(recovery_->skipped, model_->positions_[s - 1]);
                }
                return true;
            }
            if (!seen[next]) {
                seen[next] = true;
                parent[next] = state;
                open.push_back(next);
            }
        }
    }
    return false;
}

// What came before it came too early: goes on at its own place, which is behind already.
void ContentWalk::branchBack(ChildName child) {
    for (ContentModel::State state = 1; state < model_->follow_.size(); ++state) {
        if (model_->positions_[state - 1] == child) {
            addOnce(recovery_->ways, state);
        }
    }
    count(child);
}

bool ContentWalk::endsTooEarly() const {
    return !missing().empty() || !expectedNow().empty();
}

std::vector<ChildName> ContentWalk::missingInAnyOrder() const {
    std::vector<ChildName> result;
    if (model_->mayBeEmpty_ && !holds(seen_, true)) {
        return result;
    }
    for (ChildName name = 0; name < model_->names_.size(); ++name) {
        if (model_->anyOrderRequired_[name] && (seen_.empty() || !seen_[name])) {
            result.push_back(name);
        }
    }
    return result;
}

std::vector<ChildName> ContentWalk::missing() const {
    if (model_->anyOrder_) {
        return missingInAnyOrder();
    }
    std::vector<ChildName> result;
    if (!recovery_) {
        return model_->isFinal(state_) ? result : model_->required(state_);
    }
    bool first = true;
    for (const ContentModel::State way : recovery_->ways) {
        if (model_->isFinal(way)) {
            return {};
        }
        std::vector<ChildName> needed = model_->required(way);
        std::erase_if(needed, [this](ChildName name) { return holds(recovery_->misplaced, name); });
        if (first || needed.size() < result.size()) {
            result = std::move(needed);
            first = false;
        }
    }
    return result;
}

std::vector<ChildName> ContentWalk::expectedNow() const {
    // Behind a fault an open choice is not told: the fault stands for it.
    if (model_->anyOrder_ || recovery_ || model_->isFinal(state_)) {
        return {};
    }
    return model_->expected(state_);
}

} // namespace tv
