#include "platform/ContentModel.h"

#include "platform/Error.h"

#include <algorithm>
#include <deque>
#include <utility>

namespace tv {

namespace {

constexpr std::size_t maxPositions = 4096;

template<typename T>
bool holds(const std::vector<T>& items, const T& item) {
    return std::find(items.begin(), items.end(), item) != items.end();
}

template<typename T>
void addOnce(std::vector<T>& items, const T& item) {
    if (!holds(items, item)) {
        items.push_back(item);
    }
}

} // namespace

// What a part of the expression begins and ends with.
struct ContentModel::Fragment {
    bool nullable = true;
    std::vector<State> first;
    std::vector<State> last;
};

ContentModel::ContentModel(std::vector<std::string> names, const ContentExpression& expression)
    : names_(std::move(names))
    , follow_(1) {
    const Fragment whole = build(expression);
    follow_[0] = whole.first;
    final_.assign(follow_.size(), false);
    final_[0] = whole.nullable;
    for (const State state : whole.last) {
        final_[state] = true;
    }
}

ContentModel ContentModel::inAnyOrder(std::vector<std::string> names, std::vector<bool> isRequired) {
    ContentModel model;
    model.names_ = std::move(names);
    model.anyOrder_ = true;
    model.anyOrderRequired_ = std::move(isRequired);
    return model;
}

void ContentModel::link(const std::vector<State>& from, const std::vector<State>& to) {
    for (const State state : from) {
        for (const State next : to) {
            addOnce(follow_[state], next);
        }
    }
}

ContentModel::Fragment ContentModel::join(Fragment a, const Fragment& b) {
    link(a.last, b.first);
    if (a.nullable) {
        a.first.insert(a.first.end(), b.first.begin(), b.first.end());
    }
    if (b.nullable) {
        a.last.insert(a.last.end(), b.last.begin(), b.last.end());
    } else {
        a.last = b.last;
    }
    a.nullable = a.nullable && b.nullable;
    return a;
}

ContentModel::Fragment ContentModel::buildOnce(const ContentExpression& e) {
    Fragment result;
    switch (e.kind) {
    case ContentExpression::Kind::Empty:
        break;
    case ContentExpression::Kind::Name: {
        if (positions_.size() >= maxPositions) {
            throw Error(errc::overflow, "ContentModel", "O modelo de conteúdo do esquema é grande demais.");
        }
        positions_.push_back(e.name);
        follow_.emplace_back();
        const auto state = static_cast<State>(positions_.size());
        result = Fragment{false, {state}, {state}};
        break;
    }
    case ContentExpression::Kind::Sequence:
        for (const ContentExpression& part : e.parts) {
            result = join(std::move(result), build(part));
        }
        break;
    case ContentExpression::Kind::Choice:
        result.nullable = e.parts.empty();
        for (const ContentExpression& part : e.parts) {
            const Fragment one = build(part);
            result.nullable = result.nullable || one.nullable;
            result.first.insert(result.first.end(), one.first.begin(), one.first.end());
            result.last.insert(result.last.end(), one.last.begin(), one.last.end());
        }
        break;
    }
    return result;
}

// The optional copies behind the required ones, each reachable only through the one before it.
ContentModel::Fragment ContentModel::buildRest(const ContentExpression& e, std::uint32_t copies) {
    Fragment result;
    Fragment before;
    for (std::uint32_t i = 0; i < copies; ++i) {
        const Fragment copy = buildOnce(e);
        if (i == 0) {
            result.first = copy.first;
        } else {
            link(before.last, copy.first);
        }
        result.last.insert(result.last.end(), copy.last.begin(), copy.last.end());
        before = copy;
    }
    result.nullable = true;
    return result;
}

ContentModel::Fragment ContentModel::build(const ContentExpression& e) {
    Fragment result;
    const bool endless = e.maxOccurs == ContentExpression::unbounded;
    // An endless part needs one copy that leads back to itself; it also serves as the last required one.
    const std::uint32_t plain = endless && e.minOccurs > 0 ? e.minOccurs - 1 : e.minOccurs;
    for (std::uint32_t i = 0; i < plain; ++i) {
        result = join(std::move(result), buildOnce(e));
    }
    if (endless) {
        Fragment loop = buildOnce(e);
        link(loop.last, loop.first);
        loop.nullable = loop.nullable || e.minOccurs == 0;
        result = join(std::move(result), loop);
    } else if (e.maxOccurs > e.minOccurs) {
        result = join(std::move(result), buildRest(e, e.maxOccurs - e.minOccurs));
    }
    return result;
}

ContentModel::State ContentModel::step(State state, ChildName child) const noexcept {
    for (const State next : follow_[state]) {
        if (positions_[next - 1] == child) {
            return next;
        }
    }
    return none;
}

std::vector<ChildName> ContentModel::expected(State state) const {
    std::vector<ChildName> result;
    for (const State next : follow_[state]) {
        addOnce(result, positions_[next - 1]);
    }
    return result;
}

bool ContentModel::reachesEnd(State from, ChildName without) const {
    std::vector<bool> seen(follow_.size(), false);
    std::vector<State> open{from};
    seen[from] = true;
    while (!open.empty()) {
        const State state = open.back();
        open.pop_back();
        if (final_[state]) {
            return true;
        }
        for (const State next : follow_[state]) {
            if (!seen[next] && positions_[next - 1] != without) {
                seen[next] = true;
                open.push_back(next);
            }
        }
    }
    return false;
}

std::vector<ChildName> ContentModel::required(State state) const {
    std::vector<ChildName> result;
    for (ChildName name = 0; name < names_.size(); ++name) {
        if (!reachesEnd(state, name)) {
            result.push_back(name);
        }
    }
    return result;
}

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

bool ContentWalk::child(ChildName child) {
    if (model_->anyOrder_) {
        return childInAnyOrder(child);
    }
    if (recovery_) {
        return recover(child);
    }
    const ContentModel::State next = model_->step(state_, child);
    if (next != ContentModel::none) {
        state_ = next;
        return true;
    }
    recovery_ = std::make_unique<Recovery>();
    recovery_->ways.push_back(state_);
    branch(child);
    return false;
}

// True when the child goes on along one of the ways that are still open.
bool ContentWalk::recover(ChildName child) {
    std::vector<ContentModel::State> ways;
    for (const ContentModel::State way : recovery_->ways) {
        const ContentModel::State next = model_->step(way, child);
        if (next != ContentModel::none) {
            addOnce(ways, next);
        }
    }
    if (ways.empty()) {
        const auto late = std::find(recovery_->skipped.begin(), recovery_->skipped.end(), child);
        if (late != recovery_->skipped.end()) {
            recovery_->skipped.erase(late);
            return true;
        }
        ways = overMisplaced(child);
    }
    if (!ways.empty()) {
        recovery_->ways = std::move(ways);
        return true;
    }
    branch(child);
    return false;
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
    Recovery& recovery = *recovery_;
    const std::vector<ContentModel::State> before = recovery.ways; // the child is one too many: they stay
    if (child == unknownChild) {
        for (const ContentModel::State way : before) {
            for (const ContentModel::State next : model_->follow_[way]) {
                addOnce(recovery.ways, next); // it stands for the child that was due
            }
        }
        return;
    }
    addOnce(recovery.misplaced, child);
    // The children before it are missing: the nearest place ahead that reads it.
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
            if (model_->positions_[next - 1] == child) {
                addOnce(recovery.ways, next);
                for (ContentModel::State s = state; s != ContentModel::none && s != 0 && !holds(before, s);
                     s = parent[s]) {
                    addOnce(recovery.skipped, model_->positions_[s - 1]);
                }
                return;
            }
            if (!seen[next]) {
                seen[next] = true;
                parent[next] = state;
                open.push_back(next);
            }
        }
    }
}

bool ContentWalk::endsTooEarly() const {
    return !missing().empty() || !expectedNow().empty();
}

std::vector<ChildName> ContentWalk::missing() const {
    std::vector<ChildName> result;
    if (model_->anyOrder_) {
        for (ChildName name = 0; name < model_->names_.size(); ++name) {
            if (model_->anyOrderRequired_[name] && (seen_.empty() || !seen_[name])) {
                result.push_back(name);
            }
        }
        return result;
    }
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
