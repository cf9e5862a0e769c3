#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Which elements may follow each other inside an element, as an automaton over child names, independent of
/// the parser. It serves to tell a misplaced child at its start tag and to go on sensibly behind it.
namespace tv {

/// Number of a child name within one ContentModel.
using ChildName = std::uint32_t;
inline constexpr ChildName unknownChild = 0xFFFFFFFFU;

/// The regular expression of an element's children, from which the automaton is made.
struct ContentExpression {
    enum class Kind { Empty, Name, Sequence, Choice } kind = Kind::Empty;
    ChildName name = unknownChild;        ///< For Kind::Name.
    std::vector<ContentExpression> parts; ///< For Kind::Sequence and Kind::Choice.
    std::uint32_t minOccurs = 1;
    std::uint32_t maxOccurs = 1; ///< `unbounded` for no limit.
    static constexpr std::uint32_t unbounded = 0xFFFFFFFFU;
};

/// Automaton by positions: state 0 is the start, state p+1 means that position p was read last. It is made
/// deterministic where the expression is not.
class ContentModel {
public:
    using State = std::uint32_t;
    static constexpr State none = 0xFFFFFFFFU;

    /// `names` gives the children's names by their number. A single name with a large maxOccurs is counted
    /// instead of copied. Throws Error 6 when the automaton would still pass 4,096 positions (groups with a
    /// huge maxOccurs).
    ContentModel(std::vector<std::string> names, const ContentExpression& expression);
    /// Children in any order, each at most once; `isRequired` goes by child name. `mayBeEmpty`: the required
    /// ones are required only where any child stands.
    static ContentModel inAnyOrder(std::vector<std::string> names, std::vector<bool> isRequired,
                                   bool mayBeEmpty);

    /// The state behind a child, or `none` when the child may not follow.
    State step(State state, ChildName child) const noexcept;
    bool isFinal(State state) const noexcept { return final_[state]; }
    /// Names of the children that may follow.
    std::vector<ChildName> expected(State state) const;
    /// Names without which no way leads from the state to an end.
    std::vector<ChildName> required(State state) const;
    const std::string& nameOf(ChildName child) const { return names_.at(child); }
    std::size_t nameCount() const noexcept { return names_.size(); }

private:
    friend class ContentWalk;
    ContentModel() = default;
    struct Fragment;
    void assemble(const ContentExpression& expression);
    bool isAmbiguous() const;
    void makeDeterministic();
    Fragment build(const ContentExpression& e);
    Fragment buildOnce(const ContentExpression& e);
    Fragment buildCounted(const ContentExpression& e, ChildName name);
    Fragment buildRest(const ContentExpression& e, std::uint32_t copies);
    Fragment join(Fragment a, const Fragment& b);
    void link(const std::vector<State>& from, const std::vector<State>& to);
    bool reachesEnd(State from, ChildName without) const;

    std::vector<std::string> names_;
    std::vector<ChildName> positions_;       // name read at each position
    std::vector<std::vector<State>> follow_; // by state, in order of positions
    std::vector<std::uint32_t> limits_;      // by state: most children of its name in a row; 0 for no limit
    std::vector<bool> final_;
    bool isCounting_ = true;
    bool anyOrder_ = false;
    std::vector<bool> anyOrderRequired_;
    bool mayBeEmpty_ = false;
};

/// One element's children on their way through its ContentModel, with recovery behind misplaced children.
///
/// Recovery keeps the ways on which the children could still make sense: the misplaced child is one too many,
/// or what stands before it is missing, or what stands before it came too early, or (for an unknown name) it
/// stands for the child that was due. A child that fits any of them is no further fault, and neither is the
/// other half of a swap that was told already.
class ContentWalk {
public:
    explicit ContentWalk(const ContentModel& model) noexcept
        : model_(&model) {}

    /// True when the child may stand here; false when it is a fault that has not been told yet. `alsoAs` are
    /// the numbers of wildcards that take the child, too.
    bool child(ChildName child, const std::vector<ChildName>& alsoAs = {});
    /// True when a child was told as a fault.
    bool hasFault() const noexcept { return recovery_ != nullptr; }
    /// Names of required children that are missing at the end and that no earlier fault explains.
    std::vector<ChildName> missing() const;
    /// True when the end comes too early, with the alternatives of `expectedNow` in the place of one missing
    /// name.
    bool endsTooEarly() const;
    std::vector<ChildName> expectedNow() const;

private:
    struct Recovery {
        std::vector<ContentModel::State> ways;
        std::vector<ChildName> misplaced; // told as misplaced; they may be absent from their own place
        std::vector<ChildName> skipped;   // taken as missing; they may still come
    };
    bool childInAnyOrder(ChildName child);
    std::vector<ChildName> missingInAnyOrder() const;
    bool advance(ChildName child);
    bool recover(ChildName child);
    bool comesLate(ChildName child);
    void branch(ChildName child);
    bool branchAhead(ChildName child, const std::vector<ContentModel::State>& before);
    void branchBack(ChildName child);
    bool isOpen(ContentModel::State from, ContentModel::State to) const;
    ContentModel::State step(ContentModel::State from, ChildName child) const;
    void count(ChildName child);
    std::vector<ContentModel::State> overMisplaced(ChildName child) const;

    const ContentModel* model_;
    ContentModel::State state_ = 0;
    ChildName last_ = unknownChild; // the child taken last, and how many of it in a row
    std::uint32_t run_ = 0;
    std::bitset<256> read_;  // children taken so far; beyond its size all count as taken
    std::vector<bool> seen_; // of a model in any order
    std::unique_ptr<Recovery> recovery_;
};

} // namespace tv
