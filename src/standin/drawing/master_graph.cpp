#include "standin/drawing/master_graph.h"

#include <algorithm>
#include <unordered_map>

namespace tarncom32::standin::drawing {

namespace {

class Walk {
public:
    Walk(const DrawingFile& file, const Limits& limits) : file_(file), limits_(limits), states_(file.masters.size()) {
        for (std::size_t i = 0; i < file.masters.size(); ++i)
            positions_.emplace(file.masters[i].id, i);
    }

    MasterFault run() {
        for (std::size_t i = 0; i < states_.size() && fault_.problem.empty(); ++i)
            visit(i, 1);
        return fault_;
    }

private:
    struct State {
        enum { New, Open, Done } progress = New;
        std::size_t unfolded = 0; // shapes it stands for
        int depth = 1;            // masters on the longest way down from it
    };

    // The recursion is as deep as the masters, which is limited before the next level is entered.
    void visit(std::size_t at, int level) {
        State& state = states_[at];
        if (state.progress == State::Done) return;
        if (state.progress == State::Open) return fail(at, "contains an instance of itself");
        if (level > limits_.maxMasterDepth) return tooDeep(at);
        state.progress = State::Open;
        count(at, file_.masters[at].contents.shapes, level);
        state.progress = State::Done;
        if (state.depth > limits_.maxMasterDepth) tooDeep(at);
        if (state.unfolded > limits_.maxShapes)
            fail(at,
                 "stands for more than " + std::to_string(limits_.maxShapes) + " shapes with the masters that it uses");
    }

    void count(std::size_t at, std::span<const Shape> shapes, int level) {
        for (const Shape& shape : shapes) {
            if (!fault_.problem.empty()) return;
            State& state = states_[at];
            std::size_t more = 1;
            if (const auto used = positions_.find(shape.master); used != positions_.end()) {
                visit(used->second, level + 1);
                more = std::max<std::size_t>(more, states_[used->second].unfolded);
                state.depth = std::max(state.depth, states_[used->second].depth + 1);
            }
            // Each term and the sum before it are at most maxShapes, so that this cannot overflow.
            state.unfolded = std::min(state.unfolded + more, limits_.maxShapes + 1);
            count(at, shape.shapes, level);
        }
    }

    void tooDeep(std::size_t at) {
        fail(at, "uses masters within masters more than " + std::to_string(limits_.maxMasterDepth) + " deep");
    }

    void fail(std::size_t at, std::string problem) {
        if (fault_.problem.empty()) fault_ = {file_.masters[at].part, std::move(problem)};
    }

    const DrawingFile& file_;
    const Limits& limits_;
    std::unordered_map<std::uint32_t, std::size_t> positions_;
    std::vector<State> states_;
    MasterFault fault_;
};

} // namespace

MasterFault checkMasters(const DrawingFile& file, const Limits& limits) {
    return Walk(file, limits).run();
}

} // namespace tarncom32::standin::drawing
