#include "platform/ContentModel.h"

#include "platform/ContentLists.h"
#include "platform/Error.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

namespace tv {

using content::addOnce;
using content::holds;

namespace {

constexpr std::size_t maxPositions = 4096;
/// From so many optional copies of a single name on, its children are counted.
constexpr std::uint32_t countedFrom = 32;

void requireRoom(std::size_t positions) {
    if (positions >= maxPositions) {
        throw Error(errc::overflow, "ContentModel", "O modelo de conteúdo do esquema é grande demais.");
    }
}

// The name that an expression repeats, if it is nothing but one name.
std::optional<ChildName> repeatedName(const ContentExpression& e) {
    const ContentExpression* inner = &e;
    while (inner->kind != ContentExpression::Kind::Name) {
        if (inner->parts.size() != 1) {
            return std::nullopt;
        }
        inner = inner->parts.data();
        if (inner->minOccurs != 1 || inner->maxOccurs != 1) {
            return std::nullopt;
        }
    }
    return inner->name;
}

} // namespace

// What a part of the expression begins and ends with.
struct ContentModel::Fragment {
    bool nullable = true;
    std::vector<State> first;
    std::vector<State> last;
};

ContentModel::ContentModel(std::vector<std::string> names, const ContentExpression& expression)
    : names_(std::move(names)) {
    assemble(expression);
    if (!isAmbiguous()) {
        return;
    }
    const bool isCounted = std::any_of(limits_.begin(), limits_.end(), [](auto limit) { return limit != 0; });
    if (isCounted) {
        isCounting_ = false; // runs of one name can only be counted where each is one particle's
        assemble(expression);
    }
    makeDeterministic();
}

void ContentModel::assemble(const ContentExpression& expression) {
    positions_.clear();
    follow_.assign(1, {});
    limits_.assign(1, 0);
    const Fragment whole = build(expression);
    follow_[0] = whole.first;
    final_.assign(follow_.size(), false);
    final_[0] = whole.nullable;
    for (const State state : whole.last) {
        final_[state] = true;
    }
}

bool ContentModel::isAmbiguous() const {
    return std::any_of(follow_.begin(), follow_.end(), [this](const std::vector<State>& next) {
        std::vector<ChildName> found;
        for (const State state : next) {
            if (holds(found, positions_[state - 1])) {
                return true;
            }
            found.push_back(positions_[state - 1]);
        }
        return false;
    });
}

// The same model with sets of states for states. A set is reached by one name, which stays that of its state.
void ContentModel::makeDeterministic() {
    std::map<std::vector<State>, State> known{{{0}, 0}};
    std::vector<std::vector<State>> sets{{0}};
    std::vector<ChildName> names;
    std::vector<std::vector<State>> follow;
    for (State current = 0; current < sets.size(); ++current) {
        std::map<ChildName, std::vector<State>> targets;
        std::vector<ChildName> order;
        for (const State state : sets[current]) {
            for (const State next : follow_[state]) {
                addOnce(order, positions_[next - 1]);
                addOnce(targets[positions_[next - 1]], next);
            }
        }
        follow.emplace_back();
        for (const ChildName name : order) {
            std::vector<State>& target = targets[name];
            std::sort(target.begin(), target.end());
            const auto [entry, isNew] = known.emplace(target, static_cast<State>(sets.size()));
            if (isNew) {
                requireRoom(names.size());
                sets.push_back(target);
                names.push_back(name);
            }
            follow.back().push_back(entry->second);
        }
    }
    std::vector<bool> final(sets.size(), false);
    for (std::size_t i = 0; i < sets.size(); ++i) {
        final[i] = std::any_of(sets[i].begin(), sets[i].end(), [this](State state) { return final_[state]; });
    }
    positions_ = std::move(names);
    follow_ = std::move(follow);
    final_ = std::move(final);
    limits_.assign(follow_.size(), 0);
}

ContentModel ContentModel::inAnyOrder(std::vector<std::string> names, std::vector<bool> isRequired,
                                      bool mayBeEmpty) {
    ContentModel model;
    model.names_ = std::move(names);
    model.anyOrder_ = true;
    model.anyOrderRequired_ = std::move(isRequired);
    model.mayBeEmpty_ = mayBeEmpty;
    return model;
}

void ContentModel::link(const std::vector<State>& from, const std::vector<State>& to) {
    for (const State state : from) {
        for (const State next : to) {
            if (state == next && holds(follow_[state], next)) {
                limits_[state] = 0; // the counted run may be followed by another one
            }
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
        requireRoom(positions_.size());
        positions_.push_back(e.name);
        follow_.emplace_back();
        limits_.push_back(0);
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

// The required copies but the last, and one copy that leads back to itself as often as the limit allows.
ContentModel::Fragment ContentModel::buildCounted(const ContentExpression& e, ChildName name) {
    ContentExpression one;
    one.kind = ContentExpression::Kind::Name;
    one.name = name;
    Fragment result;
    for (std::uint32_t i = 1; i < e.minOccurs; ++i) {
        result = join(std::move(result), buildOnce(one));
    }
    Fragment loop = buildOnce(one);
    link(loop.last, loop.first);
    limits_[loop.last.front()] = e.maxOccurs;
    loop.nullable = e.minOccurs == 0;
    return join(std::move(result), loop);
}

ContentModel::Fragment ContentModel::build(const ContentExpression& e) {
    Fragment result;
    const bool endless = e.maxOccurs == ContentExpression::unbounded;
    const std::optional<ChildName> name = repeatedName(e);
    if (isCounting_ && name && !endless && e.maxOccurs > e.minOccurs &&
        e.maxOccurs - e.minOccurs >= countedFrom) {
        return buildCounted(e, *name);
    }
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

} // namespace tv
