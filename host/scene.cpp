// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "scene.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "byte_stream.h"
#include "exit_code.h"
#include "scale_options.h"
#include "text.h"

namespace zorhost {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kLargestSide = 65535;
constexpr std::int64_t kLastFrame = INT32_MAX;

/// A word that holds a whole number.
struct NumberWord {
  const char* name;
  std::int64_t largest;
  std::int64_t (*get)(const ChildSpec&);
  void (*set)(ChildSpec&, std::int64_t);
};
/// A word that holds text.
struct TextWord {
  const char* name;
  std::string ChildSpec::*member;
};

template <auto Member>
constexpr NumberWord Number(const char* name, std::int64_t largest) {
  return {name, largest, [](const ChildSpec& child) -> std::int64_t { return child.*Member; },
          [](ChildSpec& child, std::int64_t value) {
            child.*Member = static_cast<std::remove_reference_t<decltype(child.*Member)>>(value);
          }};
}

constexpr NumberWord kNumbers[] = {
    Number<&ChildSpec::x>("x", kLargestSide),
    Number<&ChildSpec::y>("y", kLargestSide),
    Number<&ChildSpec::w>("w", kLargestSide),
    Number<&ChildSpec::h>("h", kLargestSide),
    Number<&ChildSpec::opacity>("opacity", kCovers),
    Number<&ChildSpec::rotate>("rotate", 270),
    Number<&ChildSpec::from>("from", kLastFrame),
    Number<&ChildSpec::to>("to", kLastFrame),
    Number<&ChildSpec::fadeIn>("fade-in", kLargestSide),
    Number<&ChildSpec::fadeOut>("fade-out", kLargestSide),
};
constexpr TextWord kTexts[] = {
    {"file", &ChildSpec::file},
    {"mask", &ChildSpec::mask},
    {"scale", &ChildSpec::scale},
};
constexpr const char* kKey = "key";

std::string ColourText(std::uint32_t colour) {
  std::string text(6, '0');
  for (int i = 5; i >= 0; --i, colour >>= 4) text[i] = "0123456789abcdef"[colour & 15];
  return text;
}

std::string KnownWords() {
  std::string words;
  for (const TextWord& word : kTexts) words += std::string(word.name) + ", ";
  for (const NumberWord& word : kNumbers) words += std::string(word.name) + ", ";
  return words + kKey;
}

void Set(ChildSpec& child, const std::string& name, const std::string& value) {
  const std::string said = "--child: " + name + "=" + value;
  if (value.empty()) throw UsageError(said + ": a value is missing");
  if (name == kKey) {
    child.key = ParseColour(value, "--child: key");
    return;
  }
  for (const TextWord& word : kTexts) {
    if (name != word.name) continue;
    child.*word.member = value;
    return;
  }
  for (const NumberWord& word : kNumbers) {
    if (name != word.name) continue;
    const auto number = ParseWhole(value);
    if (!number || *number > word.largest) {
      throw UsageError(said + ": a whole number from 0 to " + std::to_string(word.largest));
    }
    word.set(child, *number);
    return;
  }
  throw UsageError("--child: unknown word '" + name + "'; known: " + KnownWords());
}

/// What can be seen of a child without its file.
void CheckChild(const ChildSpec& child) {
  if (child.file.empty()) throw UsageError("--child: file= is missing");
  const std::string name = child.Name();
  if (child.rotate % 90) throw UsageError(name + ": rotate is 0, 90, 180 or 270");
  if (child.x % 2 || child.y % 2 || child.w % 2 || child.h % 2) {
    throw UsageError(name + ": x, y, w and h are even (colour has half the picture's size)");
  }
  if (child.masked() && child.w % 4) {
    throw UsageError(name + ": w is a multiple of 4 where a mask is used");
  }
  if (child.masked() && child.key) {
    throw UsageError(name + ": mask and key exclude each other; the mask alone would decide");
  }
  if (!child.scale.empty()) {
    ModeFromName(child.scale);
    if (child.masked()) throw UsageError(name + ": scale goes with children without a mask");
    if (!child.w || !child.h) throw UsageError(name + ": scale needs w and h");
  }
  if (child.to >= 0 && child.to < child.from) {
    throw UsageError(name + ": to=" + std::to_string(child.to) +
                     " lies before from=" + std::to_string(child.from));
  }
}

ChildSpec ChildFromJson(const Json& object, const std::string& path) {
  if (!object.is_object()) throw InputError(path + ": a child is an object");
  ChildSpec child;
  for (const auto& [name, value] : object.items()) {
    const bool text = value.is_string();
    if (!text && !value.is_number_integer()) {
      throw InputError(path + ": '" + name + "' is neither text nor a whole number");
    }
    Set(child, name, text ? value.get<std::string>() : value.dump());
  }
  CheckChild(child);
  return child;
}

Json ToJson(const ChildSpec& child) {
  const ChildSpec defaults;
  Json object = Json::object();
  for (const TextWord& word : kTexts) {
    if (!(child.*word.member).empty()) object[word.name] = child.*word.member;
  }
  for (const NumberWord& word : kNumbers) {
    if (word.get(child) != word.get(defaults)) object[word.name] = word.get(child);
  }
  if (child.key) object[kKey] = ColourText(*child.key);
  return object;
}

}  // namespace

ChildSpec ParseChild(const std::string& text) {
  ChildSpec child;
  for (const std::string& word : SplitWords(text, ',')) {
    const std::size_t equals = word.find('=');
    if (equals == std::string::npos) {
      throw UsageError("--child: '" + word + "' isn't a word of the form name=value");
    }
    Set(child, word.substr(0, equals), word.substr(equals + 1));
  }
  CheckChild(child);
  return child;
}

Scene ReadScene(const std::string& path) {
  const std::vector<std::uint8_t> bytes = ReadWholeFile(path);
  const Json json = Json::parse(bytes.begin(), bytes.end(), nullptr, false);
  if (!json.is_object()) throw InputError(path + ": not a scene (an object in JSON)");
  Scene scene;
  for (const auto& [name, value] : json.items()) {
    if (name == "base" && value.is_string()) {
      scene.base = value.get<std::string>();
    } else if (name == "children" && value.is_array()) {
      for (const Json& child : value) scene.children.push_back(ChildFromJson(child, path));
    } else {
      throw InputError(path + ": '" + name + "': a scene has a text 'base' and a list 'children'");
    }
  }
  return scene;
}

void WriteScene(const Scene& scene, const std::string& path) {
  Json children = Json::array();
  for (const ChildSpec& child : scene.children) children.push_back(ToJson(child));
  const Json json = {{"base", scene.base}, {"children", children}};
  ByteWriter out(path);
  out.Write(json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
  out.Finish();
}

int Visibility(const ChildSpec& child, std::int64_t frame, std::int64_t last) {
  if (frame < child.from || (last >= 0 && frame > last)) return 0;
  // A fade of n frames takes n steps, the next one stands at the full opacity.
  const auto step = [](std::int64_t frames, int fade) {
    return std::min<std::int64_t>(kCovers, kCovers * (frames + 1) / (fade + 1));
  };
  std::int64_t level = step(frame - child.from, child.fadeIn);
  if (last >= 0) level = std::min(level, step(last - frame, child.fadeOut));
  return static_cast<int>(child.opacity * level / kCovers);
}

}  // namespace zorhost
