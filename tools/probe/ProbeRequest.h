#pragma once

#include "probe/ProbeJson.h"

#include <chrono>
#include <cstdint>
#include <vector>

namespace tavrel::probe {

/// One request, and the times that its engine took where the request asks for them.
class ProbeRequest {
public:
    /// Borrows `body`. Throws `RequestError` when `"bench"` is no number of runs.
    explicit ProbeRequest(const Json& body) : body_(body), runs_(runsOf(body)) {}

    const Json& body() const { return body_; }

    /// Runs the engine's work on what `makeInput` makes, and gives back what it answers. With
    /// `"bench": n` the work runs n times, each on an input of its own, and only the work is timed.
    ///
    ///     auto json = request.measured([&] { return bytes; },
    ///                                  [](std::string& bytes) { return normalize(bytes); });
    ///
    /// The input lives until its work is done. A work that changes its input (a pane, a document)
    /// takes it by reference and moves it out as its answer.
    template<class MakeInput, class Work>
    auto measured(MakeInput makeInput, Work work)
    {
        for (std::int64_t run = 1; run < runs_; ++run)
            runOnce(makeInput, work);
        return runOnce(makeInput, work);
    }

    /// Adds the times to the engine's answer where the request asks for them.
    void addTimes(Json& response) const
    {
        if (member(body_, "bench") && response.is_object())
            response["nanoseconds"] = nanoseconds_;
    }

private:
    static std::int64_t runsOf(const Json& body)
    {
        constexpr std::int64_t mostRuns = 1'000'000;
        const std::int64_t runs = integerMember(body, "bench", 1);
        if (runs < 1 || runs > mostRuns)
            throw RequestError("'bench' must be a number of runs from 1 to 1000000");
        return runs;
    }

    template<class MakeInput, class Work>
    auto runOnce(MakeInput& makeInput, Work& work)
    {
        auto input = makeInput();
        const auto start = std::chrono::steady_clock::now();
        auto result = work(input);
        const auto taken = std::chrono::steady_clock::now() - start;
        nanoseconds_.push_back(std::chrono::duration_cast<std::chrono::nanoseconds>(taken).count());
        return result;
    }

    const Json& body_;
    std::int64_t runs_;
    std::vector<std::int64_t> nanoseconds_;
};

}  // namespace tavrel::probe
