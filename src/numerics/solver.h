// clsSolveBase: the library's root finder. A problem without a closed form derives from it and supplies the function
// whose zero is the answer; the base looks for a bracket by the strategies of a search mode and refines it by Ridders'
// method.
//
//     class RateSolve : public clsSolveBase {
//         double eval(double rate) override { return present_value(rate) - price; }
//         void setup() override {}
//     };
//     double rate = RateSolve().solve(-0.99999, 10000.0, 1e-10, 100);
#pragma once

#include "core/context.h"

namespace qx {

/// Where solve() looks for a bracket. Every mode but `plain` goes on to a second phase of wider searches; a mode that
/// is not listed starts with it.
enum SolveMode : int {
    plain = 0,               ///< between x1 and x2 only
    rate_of_return = 1,      ///< where rates of return are usually found, from 0 to 2000% and down to -100%
    plain_with_recovery = 2, ///< between x1 and x2 first
    guess_any_sign = 3,      ///< outward from a guess x1 by a step x2, within -1e9 and 1e9
    guess_positive = 4,      ///< the same within the tolerance and 1e9
};

class clsSolveBase {
  public:
    clsSolveBase();
    clsSolveBase(const clsSolveBase&) = delete;
    clsSolveBase& operator=(const clsSolveBase&) = delete;

    /// The function whose root is sought.
    virtual double eval(double x) = 0;
    /// Prepares the problem before the first solve().
    virtual void setup() = 0;
    virtual ~clsSolveBase() = default;

    /// A root of eval(), to within `tol` in x. x1 and x2 are two starting points, or a guess and a step. Throws
    /// errlibnotbracketed if no search finds a change of sign, errlibnoconverge if `maxiter` rounds do not refine it,
    /// and whatever eval() throws.
    double solve(double x1, double x2, double tol, int maxiter, int mode = rate_of_return,
                 const FunctionContext& caller = {});

    /// Rounds that the last solve() spent in bracketing.
    int iterations() const { return iterations_; }

  protected:
    /// A pair of points with their function values.
    struct Pair {
        double low, high;
        double flow = 0.0, fhigh = 0.0;

        bool crosses() const { return flow * fhigh < 0.0; }
        bool crosses_or_zero() const { return flow * fhigh <= 0.0; }
    };

    // The bracketing strategies: each moves the pair for at most n rounds until it brackets a root.

    /// Outward from a guess, the step up doubling and the step down growing by 2.5.
    bool expand(Pair& pair, double guess, double step, double lowest, double highest, int n);
    /// From one end of the pair on, by n-ths of its width.
    bool traverse(Pair& pair, int n, bool downwards);
    /// From half a step outside the pair to its middle.
    bool contract(Pair& pair, int n);
    /// By random points of the pair's range.
    bool montecarlo(Pair& pair, int n);

  private:
    void evaluate(Pair& pair);
    /// The same; a point that is an end of a pair evaluated before is not asked again, unless the trace shows it.
    void evaluate(Pair& pair, const Pair& known);
    bool locate_rate(Pair& pair, double x1, double x2);
    double refine(Pair pair, double tol, int maxiter);
    template <class E, class... Pieces>
    [[noreturn]] void fail(const Pieces&... pieces);

    FunctionContext context_;
    int iterations_ = 0;
};

} // namespace qx
