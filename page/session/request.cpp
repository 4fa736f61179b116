#include "session/request.h"

#include <algorithm>

#include <fmt/format.h>

#include "designer/command_words.h"
#include "designer/names.h"
#include "designer/refusal.h"
#include "designer/saved_design.h"

namespace page {
namespace {

template <typename T>
T value_in(const Request &request, const char *member, bool (*fits)(const Request &),
           const char *kind) {
  const auto found = request.find(member);
  if (found == request.end() || !fits(*found))
    throw designer::Refusal(fmt::format("'{}' is {}", member, kind));
  return found->get<T>();
}

bool is_text(const Request &value) { return value.is_string(); }
bool is_number(const Request &value) { return value.is_number(); }

template <bool (*fits)(const Request &)>
bool is_list(const Request &value) {
  return value.is_array() && std::all_of(value.begin(), value.end(), fits);
}

// At least 1 Hz, below which the module takes no rate.
void follow_audio(designer::Designer &designer, const Request &request) {
  const double rate =
      has(request, "audio_rate") ? number_in(request, "audio_rate") : designer::audio_samplerate;
  if (!(rate >= 1 && rate <= 1e9)) throw designer::Refusal("'audio_rate' is a rate in Hz from 1");
  designer.set_audio_rate(rate);
}

bool has_one_cutoff(const designer::Settings &settings) {
  if (!settings.has("response")) return true;
  const auto response = designer::response_named(settings.text("response"));
  return response && !analysis::has_two_edges(*response);
}

bool gives_rate(const designer::Settings &settings) {
  const designer::Values *rate = settings.find("samplerate");
  return rate != nullptr && designer::number_in(rate->front()).value_or(0) >= 1;
}

}  // namespace

bool has(const Request &request, const char *member) { return request.contains(member); }

std::string text_in(const Request &request, const char *member) {
  return value_in<std::string>(request, member, is_text, "a text");
}

double number_in(const Request &request, const char *member) {
  return value_in<double>(request, member, is_number, "a number");
}

std::vector<double> numbers_in(const Request &request, const char *member) {
  return value_in<std::vector<double>>(request, member, is_list<is_number>, "a list of numbers");
}

std::vector<std::string> texts_in(const Request &request, const char *member) {
  return value_in<std::vector<std::string>>(request, member, is_list<is_text>, "a list of texts");
}

bool flag_in(const Request &request, const char *member) {
  return request.value(member, text::Json(false)) == text::Json(true);
}

designer::Settings settings_in(designer::Designer &designer, const Request &request,
                               const char *member) {
  designer::Settings settings;
  if (const auto found = request.find(member); found != request.end())
    settings = designer::parse_settings(found->dump(), "the request");
  if (has(request, "audio_rate") && !settings.has("frequency") && has_one_cutoff(settings))
    settings.set("frequency", *designer.fresh().find("frequency"));
  return settings;
}

designer::Design design_in(designer::Designer &designer, const Request &request,
                           const char *member) {
  follow_audio(designer, request);
  return designer.design(settings_in(designer, request, member));
}

designer::Settings settings_at_audio_rate(designer::Designer &designer, const Request &request,
                                          const char *member) {
  designer::Settings settings = settings_in(designer, request, member);
  if (has(request, "audio_rate") && !gives_rate(settings))
    settings.set("samplerate", {number_in(request, "audio_rate")});
  return settings;
}

std::vector<std::string> setting_words(designer::Designer &designer,
                                       const designer::Settings &settings) {
  return designer::command_words(designer.attributes(), designer.accepted(settings).settings,
                                 designer.fresh());
}

}  // namespace page
