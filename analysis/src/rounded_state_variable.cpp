#include "rounded_state_variable.h"

#include <cmath>

#include "analysis/rounding.h"

namespace analysis {
namespace {

// Below this g, what an integrator adds changes its state by less than a fourth.
constexpr double small_integrator = 0.125;

/** The coefficients as rounded, those of the output divided by 2^exponent. */
struct Coefficients {
  double g, r, h, high, band, low;
};

Coefficients as_given(const StateVariable &form) {
  return {form.g, form.r, form.h, form.high, form.band, form.low};
}

Coefficients rounded(const StateVariable &form, Arithmetic arithmetic) {
  return as_given(arithmetic == Arithmetic::floats ? rounded_to_float(form) : form);
}

/** An extended polynomial, so that two that are nearly the same have a difference. */
struct WideTrinomial {
  Extended at_one, ends, slant;
};

struct WideFraction {
  WideTrinomial numerator, denominator;
};

Trinomial narrow(const WideTrinomial &q) {
  return {static_cast<double>(q.at_one), static_cast<double>(q.ends), static_cast<double>(q.slant)};
}

WideTrinomial difference(const WideTrinomial &x, const WideTrinomial &y) {
  return {x.at_one - y.at_one, x.ends - y.ends, x.slant - y.slant};
}

WideTrinomial wide_trinomial(const WideQuadratic &q) {
  return {q.q0 + q.q2 + q.q1, q.q0 + q.q2, q.q0 - q.q2};
}

WideFraction fraction_of(const Section &section) {
  return {wide_trinomial(numerator_of(section)), wide_trinomial(denominator_of(section))};
}

WideFraction fraction_of(const Coefficients &c) {
  const Extended g = c.g, r = c.r, h = c.h, high = c.high, band = c.band, low = c.low;
  const Extended at_one = 4 * g * g * h, slant = 2 * g * h * (r - g);
  return {{low * at_one, 2 * h * (high + g * g * low), 2 * band * h * g},
          {at_one, 2 - slant, slant}};
}

bool is_stable(const Coefficients &c) {
  const WideTrinomial denominator = fraction_of(c).denominator;
  return denominator.at_one > 0 && denominator.slant > 0 &&
         static_cast<Extended>(c.h) * c.g * c.r < 1;
}

void set_polynomials(RoundedSection &model, const Coefficients &c, const WideFraction &wanted) {
  const WideFraction computed = fraction_of(c);
  model.numerator = narrow(computed.numerator);
  model.denominator = narrow(computed.denominator);
  model.wanted_numerator = narrow(wanted.numerator);
  model.wanted_denominator = narrow(wanted.denominator);
  model.numerator_error = narrow(difference(computed.numerator, wanted.numerator));
  model.denominator_error = narrow(difference(computed.denominator, wanted.denominator));
}

/** Numbers of the loop for an input of 1, over A; of the states before their delay. */
struct Signals {
  Trinomial hp, bp, lp, s1, s2;
  Trinomial without_s2; /**< x - r s1 */
};

Signals signals_of(const Coefficients &c) {
  const double gh = c.g * c.h, ggh = c.g * c.g * c.h;
  const Extended twice = 2 * static_cast<Extended>(c.g) * c.g * c.h;
  return {
      .hp = {0, 2 * c.h, 0},              // h (1 - 1/z)^2
      .bp = {0, 0, 2 * gh},               // g h (1 - 1/z^2)
      .lp = {4 * ggh, 2 * ggh, 0},        // g^2 h (1 + 1/z)^2
      .s1 = {0, 2 * gh, 2 * gh},          // 2 g h (1 - 1/z)
      .s2 = {4 * ggh, 2 * ggh, 2 * ggh},  // 2 g^2 h (1 + 1/z)
      .without_s2 = trinomial({1, twice - 2, twice + 1}),
  };
}

/** The ways of an error to the output, over A: from an error in what the name says, which is passed
 *  on to all that is computed from it. */
struct Ways {
  Trinomial hp, t, bp, s1, lp, s2;
};

// Each error goes to hp, bp and lp by the solution of the loop's equations with it as the input.
Ways ways_of(const Coefficients &c, const Trinomial &numerator) {
  const auto output = [&](const Trinomial &hp, const Trinomial &bp, const Trinomial &lp) {
    return sum(sum(times(hp, c.high), times(bp, c.band)), times(lp, c.low));
  };
  const double g = c.g, h = c.h, hr = h * c.r, hg = h * g, hrg = hr * g, hgg = hg * g;
  return {
      .hp = times(numerator, 1 / h),
      .t = output({-4 * hg, 2 * hr - 2 * hg, 2 * hg - 2 * hr}, {0, 0, 2}, {4 * g, 2 * g, 0}),
      .bp = output({-2 * hg, hr, -hr}, {0, 1 - hrg, 1 + hrg},
                   times(Trinomial{2 + 2 * hrg, 1 + hrg, 1 - hrg}, g)),
      .s1 = output({-2 * hg, hr - 2 * hg, 2 * hg - hr}, times(Trinomial{0, -1, 1}, 1 - hrg),
                   times(Trinomial{2, 1, -1}, g * (1 - hrg))),
      .lp = output({0, h, -h}, {-2 * hg, -hg, hg}, {2 * hrg + 2 * hgg, 1 + hgg, 1 - hgg}),
      .s2 = output({0, h, -h}, {-2 * hg, -hg, hg}, trinomial({0, 1 - hgg, 2 * hrg - 1 - hgg})),
  };
}

class Sources {
 public:
  /** Numbers that are rounded on one way through the loop, as `collect(Way &)` names them. */
  template <class Collect>
  void add(const Trinomial &way_out, Collect collect) {
    Way way(squared_magnitude(way_out), true, false);
    collect(way);
    all_.push_back(way.source());
  }

  void add(const Trinomial &way_out, const Trinomial &level) {
    add(way_out, [&](Way &way) { way.shaped(level); });
  }

  void add_output(const Way &way) { all_.push_back(way.source()); }

  const std::vector<RoundingSource> &all() const { return all_; }

 private:
  std::vector<RoundingSource> all_;
};

std::vector<RoundingSource> sources_of(const Coefficients &c, const Trinomial &numerator) {
  const Signals signal = signals_of(c);
  const Ways from = ways_of(c, numerator);
  // u is added to lp, and with lp to s2.
  const Trinomial from_u = sum(from.lp, from.s2);
  Sources sources;
  sources.add(from.hp, [&](Way &way) {
    way.shaped_product(c.h * c.r, signal.s1);
    way.shaped(times(signal.without_s2, c.h));
    way.shaped(signal.hp);
    if (!is_exact_factor(c.h)) way.shaped(signal.hp);
  });
  sources.add(from.t, [&](Way &way) { way.shaped_product(c.g, signal.hp); });
  sources.add(from_u, [&](Way &way) { way.shaped_product(c.g, signal.bp); });
  if (c.g < small_integrator) {
    // An integrator adds the same number twice. While that is small beside the state, both sums
    // are rounded alike, and their errors are one.
    sources.add(sum(from.bp, from.s1), signal.bp);
    sources.add(from_u, signal.lp);
  } else {
    sources.add(from.bp, signal.bp);
    sources.add(from.s1, signal.s1);
    sources.add(from.lp, signal.lp);
    sources.add(from.s2, signal.s2);
  }
  Way way(constant(1), false, true);
  way.shaped_product(c.high, signal.hp);
  way.shaped_product(c.band, signal.bp);
  way.shaped_product(c.low, signal.lp);
  if (c.high != 0 && c.band != 0)
    way.shaped(sum(times(signal.hp, c.high), times(signal.bp, c.band)));
  if (c.low != 0 && (c.high != 0 || c.band != 0)) way.shaped(numerator);
  sources.add_output(way);
  return sources.all();
}

void divide_output(Coefficients &c, int exponent) {
  for (double *value : {&c.high, &c.band, &c.low}) *value = std::ldexp(*value, -exponent);
}

// @param wanted  for z, or for -z where the form is mirrored, with the numerator divided
RoundedSection rounded_section(const StateVariable &form, Coefficients c, int exponent,
                               const WideFraction &wanted) {
  RoundedSection model{};
  model.turned = form.mirrored;
  model.exponent = exponent;
  divide_output(c, exponent);
  model.stable = is_stable(c);
  set_polynomials(model, c, wanted);
  model.sources = sources_of(c, model.numerator);
  return model;
}

}  // namespace

RoundedSection rounded_state_variable(const Section &section, const StateVariable &form,
                                      Arithmetic arithmetic) {
  const Coefficients c = rounded(form, arithmetic);
  const Section given = form.mirrored ? turned_round(section) : section;
  const int exponent = common_exponent({c.high, c.band, c.low, 0, 0}, given);
  return rounded_section(form, c, exponent, fraction_of(divided(given, exponent)));
}

RoundedSection rounded_state_variable(const StateVariable &form, Arithmetic arithmetic) {
  const Coefficients c = rounded(form, arithmetic);
  Coefficients given = as_given(form);
  const int exponent = common_exponent({c.high, c.band, c.low, 0, 0}, section_of(form));
  divide_output(given, exponent);
  return rounded_section(form, c, exponent, fraction_of(given));
}

}  // namespace analysis
