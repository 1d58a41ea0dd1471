// Forms keep places in units of their container, mostly twips: 1440 an inch, 15 a dot.

#include "site/FormDrawing.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <unordered_map>

#include "core/Ascii.h"
#include "site/SiteHtml.h"
#include "site/SiteRun.h"

namespace vendrel::site {
namespace {

constexpr double kTwipsPerDot = 15;
constexpr std::size_t kMostDrawn = 2000;
constexpr int kDeepestDrawn = 40;
constexpr double kLargest = 20000;  // dots; what is larger was no size
constexpr double kMenuHeight = 20;

using PropertyMap = std::unordered_map<std::string, std::string>;

PropertyMap PropertiesOf(const VBControl& control) {
  PropertyMap properties;
  for (ControlProperty& property : control.ControlProperties()) {
    if (property.Depth > 0) continue;
    // A place in the companion file is nothing to be shown.
    if (property.Kind == ControlValue::Companion || property.Kind == ControlValue::List)
      property.Value = property.Items.empty() ? std::string() : property.Items.front();
    properties.emplace(LowerAscii(property.Name), std::move(property.Value));
  }
  return properties;
}

double NumberOf(const PropertyMap& properties, std::string_view name, double otherwise) {
  const auto found = properties.find(std::string(name));
  if (found == properties.end()) return otherwise;
  double number = otherwise;
  const std::string& text = found->second;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return std::clamp(number, -kLargest * kTwipsPerDot, kLargest * kTwipsPerDot);
}

std::string TextOf(const PropertyMap& properties, std::string_view name) {
  const auto found = properties.find(std::string(name));
  return found == properties.end() ? std::string() : found->second;
}

// "&H00BBGGRR&", or a colour of the system by its number.
std::string ColourOf(const PropertyMap& properties, std::string_view name, std::string otherwise) {
  std::string text = TextOf(properties, name);
  if (!StartsWithNoCaseAscii(text, "&H")) return otherwise;
  std::uint32_t colour = 0;
  std::from_chars(text.data() + 2, text.data() + text.size(), colour, 16);
  if (colour & 0x80000000u) switch (colour & 0xFF) {
      case 5: return "#ffffff";
      case 8: return "#000000";
      case 12: return "#ababab";
      case 13: return "#0a64ad";
      case 15: return "#f0f0f0";
      case 24: return "#ffffe1";
      default: return otherwise;
    }
  char digits[8];
  std::snprintf(digits, sizeof digits, "#%02x%02x%02x", colour & 0xFF, (colour >> 8) & 0xFF,
                (colour >> 16) & 0xFF);
  return digits;
}

std::string Dots(double number) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f", number);
  std::string dots(text);
  if (dots.ends_with(".0")) dots.resize(dots.size() - 2);
  return dots == "-0" ? "0" : dots;
}

std::string Rectangle(double width, double height, std::string_view fill, std::string_view stroke,
                      std::string_view more = {}) {
  std::string svg = "<rect x=\".5\" y=\".5\" width=\"" + Dots(std::max(0.0, width - 1)) +
                    "\" height=\"" + Dots(std::max(0.0, height - 1)) + "\" fill=\"";
  return svg.append(fill)
      .append("\" stroke=\"")
      .append(stroke)
      .append("\"")
      .append(more)
      .append("/>");
}

// As much of the text as about fits into `width`.
std::string Label(double x, double y, std::string_view text, double width,
                  std::string_view more = {}) {
  if (text.empty()) return {};
  const auto most = static_cast<std::size_t>(std::max(2.0, width / 4.5));
  return "<text x=\"" + Dots(x) + "\" y=\"" + Dots(y) + "\" font-size=\"11\"" + std::string(more) +
         ">" + Text(Shortened(WithoutAccessKey(text), std::min<std::size_t>(most, 300))) +
         "</text>";
}

bool IsOneOfTypes(std::string_view type, std::initializer_list<std::string_view> words) {
  for (const std::string_view word : words)
    if (EqualsNoCaseAscii(type, word)) return true;
  return false;
}

class FormPainter {
 public:
  FormPainter(std::string& svg, const SiteRun& run) : mSvg(svg), mRun(run) {}

  bool Paint(const Component& form) {
    const VBControl& root = *form.VBControl;
    const PropertyMap properties = PropertiesOf(root);
    double width = NumberOf(properties, "clientwidth", 0);
    double height = NumberOf(properties, "clientheight", 0);
    if (width <= 0) width = NumberOf(properties, "scalewidth", 0);
    if (height <= 0) height = NumberOf(properties, "scaleheight", 0);
    width /= kTwipsPerDot;
    height /= kTwipsPerDot;
    if (width < 1 || height < 1) return false;
    const std::string menus = Menus(root);
    const double top = menus.empty() ? 0 : kMenuHeight;
    mSvg.append("<svg xmlns=\"http://www.w3.org/2000/svg\" role=\"img\" width=\"")
        .append(Dots(width + 2))
        .append("\" height=\"")
        .append(Dots(height + top + 24))
        .append("\" viewBox=\"0 0 ")
        .append(Dots(width + 2))
        .append(" ")
        .append(Dots(height + top + 24))
        .append("\" aria-label=\"Picture of ");
    AppendPlain(mSvg, form.Name);
    mSvg.append("\">\n");
    mSvg.append(Rectangle(width + 2, height + top + 24, "#dfe6ee", "#8a97a6"));
    mSvg.append(Label(8, 16, TextOf(properties, "caption"), width)).append("\n");
    if (!menus.empty()) {
      Open(1, 23, width, kMenuHeight, true);
      mSvg.append(Rectangle(width, kMenuHeight, "#f7f7f7", "none")).append(menus).append("</g>\n");
    }
    Open(1, 23 + top, width, height, true);
    mSvg.append(
        Rectangle(width + 1, height + 1, ColourOf(properties, "backcolor", "#f0f0f0"), "none"));
    PaintChildren(root, UnitOf(properties, width));
    mSvg.append("</g>\n</svg>\n");
    return true;
  }

 private:
  struct Waiting {
    const VBControl* Control;  // null: ends what was opened
    double Unit;
    int Depth;
  };

  // Dots that one unit of a container measures.
  static double UnitOf(const PropertyMap& properties, double width) {
    const double mode = NumberOf(properties, "scalemode", 1);
    if (mode == 1) return 1 / kTwipsPerDot;
    if (mode == 3) return 1;
    const double scale = NumberOf(properties, "scalewidth", 0);
    return scale > 0 ? width / scale : 1 / kTwipsPerDot;
  }

  // A place of its own; what is cut holds others, which do not reach out of it.
  void Open(double x, double y, double width, double height, bool isCut) {
    if (isCut) {
      const std::string number = std::to_string(++mCuts);
      mSvg.append("<clipPath id=\"cut-").append(number).append("\"><rect width=\"");
      mSvg.append(Dots(std::max(0.0, width))).append("\" height=\"");
      mSvg.append(Dots(std::max(0.0, height))).append("\"/></clipPath>\n");
    }
    mSvg.append("<g transform=\"translate(").append(Dots(x)).append(",").append(Dots(y));
    mSvg.append(")\"");
    if (isCut) mSvg.append(" clip-path=\"url(#cut-").append(std::to_string(mCuts)).append(")\"");
    mSvg.append(">\n");
  }

  void Push(std::vector<Waiting>& waiting, const VBControl& container, double unit, int depth) {
    // The first one lies on top: it is painted last.
    for (const VBControl& child : container.VBControls) waiting.push_back({&child, unit, depth});
  }

  void PaintChildren(const VBControl& root, double unit) {
    std::vector<Waiting> waiting;
    Push(waiting, root, unit, 1);
    while (!waiting.empty()) {
      const Waiting next = waiting.back();
      waiting.pop_back();
      if (!next.Control) {
        mSvg.append("</g>\n");
        continue;
      }
      if (IsMenu(*next.Control) || ++mDrawn > kMostDrawn || next.Depth > kDeepestDrawn) continue;
      PaintControl(*next.Control, next, waiting);
    }
  }

  static std::string_view TypeOf(const VBControl& control) {
    const std::string_view type = control.ProgID;
    return type.substr(type.rfind('.') + 1);
  }
  static bool IsMenu(const VBControl& control) {
    return EqualsNoCaseAscii(control.ProgID, "VB.Menu");
  }

  std::string Menus(const VBControl& root) const {
    std::string svg;
    double x = 8;
    for (const VBControl& child : root.VBControls) {
      if (!IsMenu(child) || child.Caption == "-" || x > kLargest) continue;
      const std::string caption = WithoutAccessKey(child.Caption);
      svg.append(Link(child)).append(Label(x, 14, child.Caption, 400));
      svg.append("</a>");
      x += 20 + 6.5 * static_cast<double>(std::min<std::size_t>(caption.size(), 60));
    }
    return svg;
  }

  std::string Link(const VBControl& control) const {
    std::string svg = "<a href=\"";
    svg.append(mRun.Map.LeafOf(control)).append("\"><title>");
    AppendPlain(svg, control.Name + ", " + control.ProgID);
    return svg.append("</title>");
  }

  void PaintControl(const VBControl& control, const Waiting& at, std::vector<Waiting>& waiting) {
    const PropertyMap properties = PropertiesOf(control);
    const std::string_view type = TypeOf(control);
    if (IsOneOfTypes(type, {"Line"})) return PaintLine(control, properties, at.Unit);
    const double x = NumberOf(properties, "left", 0) * at.Unit;
    const double y = NumberOf(properties, "top", 0) * at.Unit;
    double width = NumberOf(properties, "width", 0) * at.Unit;
    double height = NumberOf(properties, "height", 0) * at.Unit;
    const bool isUnseen = width <= 0 || IsOneOfTypes(type, {"Timer", "ImageList", "CommonDialog"});
    if (isUnseen) width = height = 28;
    if (height <= 0) height = 20;
    Open(x, y, width, height, control.VBControls.Count() > 0);
    mSvg.append(Link(control));
    PaintBody(control, type, properties, width, height, isUnseen);
    mSvg.append("</a>\n");
    waiting.push_back({nullptr, 0, 0});
    const bool isFrame = IsOneOfTypes(type, {"Frame"});
    Push(waiting, control, isFrame ? 1 / kTwipsPerDot : UnitOf(properties, width), at.Depth + 1);
  }

  void PaintLine(const VBControl& control, const PropertyMap& properties, double unit) {
    const auto place = [&](std::string_view name) {
      return Dots(NumberOf(properties, name, 0) * unit);
    };
    mSvg.append(Link(control)).append("<line x1=\"").append(place("x1")).append("\" y1=\"");
    mSvg.append(place("y1")).append("\" x2=\"").append(place("x2")).append("\" y2=\"");
    mSvg.append(place("y2"))
        .append("\" stroke=\"")
        .append(ColourOf(properties, "bordercolor", "#444444"))
        .append("\"/></a>\n");
  }

  void PaintBody(const VBControl& control, std::string_view type, const PropertyMap& properties,
                 double width, double height, bool isUnseen) {
    const std::string caption = TextOf(properties, "caption");
    const double middle = height / 2 + 4;
    if (isUnseen) {
      mSvg.append(Rectangle(width, height, "#fffbe8", "#a09050", " stroke-dasharray=\"3 2\""));
      mSvg.append(Label(3, 18, type.substr(0, 3), 40));
    } else if (IsOneOfTypes(type, {"Label"})) {
      if (TextOf(properties, "backstyle") != "0" && properties.contains("backcolor"))
        mSvg.append(Rectangle(width, height, ColourOf(properties, "backcolor", "none"), "none"));
      PaintCaption(properties, caption, width, std::min(middle, 13.0));
      if (caption.empty()) mSvg.append(Rectangle(width, height, "none", "#b9c0c8"));
    } else if (IsOneOfTypes(type, {"CommandButton", "SSCommand"})) {
      mSvg.append(Rectangle(width, height, "#e6e9ed", "#7d8894", " rx=\"3\""));
      mSvg.append(Label(width / 2, middle, caption, width, " text-anchor=\"middle\""));
    } else if (IsOneOfTypes(type, {"CheckBox", "OptionButton"})) {
      const bool isRound = type.size() > 8;
      mSvg.append(isRound ? "<circle cx=\"7\" cy=\"" : "<rect x=\"1.5\" y=\"");
      mSvg.append(Dots(isRound ? height / 2 : height / 2 - 6));
      mSvg.append(isRound ? "\" r=\"5.5\"" : "\" width=\"11\" height=\"11\"");
      mSvg.append(" fill=\"#ffffff\" stroke=\"#59636e\"/>")
          .append(Label(18, middle, caption, width - 18));
    } else if (IsOneOfTypes(type, {"Frame"})) {
      PaintFrame(ColourOf(properties, "backcolor", "#f0f0f0"), caption, width, height);
    } else if (IsOneOfTypes(type, {"Shape"})) {
      mSvg.append(Rectangle(width, height, "none", ColourOf(properties, "bordercolor", "#444444")));
    } else if (IsOneOfTypes(type, {"PictureBox"})) {
      const bool hasBorder = TextOf(properties, "borderstyle") != "0";
      mSvg.append(Rectangle(width, height, ColourOf(properties, "backcolor", "#f0f0f0"),
                            hasBorder ? "#9aa4ae" : "none"));
    } else {
      PaintField(control, type, properties, width, height);
    }
  }

  // The caption interrupts the line.
  void PaintFrame(const std::string& fill, std::string_view caption, double width, double height) {
    const auto rectangle = [&](std::string_view x, std::string_view y, double w, double h,
                               std::string_view stroke) {
      mSvg.append("<rect x=\"").append(x).append("\" y=\"").append(y).append("\" width=\"");
      mSvg.append(Dots(std::max(0.0, w))).append("\" height=\"").append(Dots(std::max(0.0, h)));
      mSvg.append("\" fill=\"").append(fill).append("\" stroke=\"").append(stroke).append("\"/>");
    };
    rectangle(".5", "6.5", width - 1, height - 7, "#b4bcc5");
    if (caption.empty()) return;
    rectangle("5", "0", std::min(width - 10, 8 + 6.0 * static_cast<double>(caption.size())), 12,
              "none");
    mSvg.append(Label(8, 11, caption, width - 8));
  }

  void PaintCaption(const PropertyMap& properties, std::string_view caption, double width,
                    double y) {
    const std::string alignment = TextOf(properties, "alignment");
    if (alignment == "2")
      mSvg.append(Label(width / 2, y, caption, width, " text-anchor=\"middle\""));
    else if (alignment == "1")
      mSvg.append(Label(width - 2, y, caption, width, " text-anchor=\"end\""));
    else
      mSvg.append(Label(1, y, caption, width));
  }

  // What takes or shows something: its text, else its name.
  void PaintField(const VBControl& control, std::string_view type, const PropertyMap& properties,
                  double width, double height) {
    mSvg.append(Rectangle(width, height, ColourOf(properties, "backcolor", "#ffffff"), "#9aa4ae"));
    std::string text = TextOf(properties, "text");
    if (text.empty()) text = TextOf(properties, "caption");
    if (!text.empty()) {
      mSvg.append(Label(4, std::min(height / 2 + 4, 15.0), text, width));
    } else {
      mSvg.append(Label(4, std::min(height / 2 + 4, 15.0), ReplaceAll(control.Name, "&", "&&"),
                        width, " fill-opacity=\".5\""));
    }
    if (!IsOneOfTypes(type, {"ComboBox", "ImageCombo", "DataCombo", "DriveListBox"})) return;
    const double x = width - 16;
    mSvg.append("<path d=\"M").append(Dots(x)).append(" ").append(Dots(height / 2 - 2));
    mSvg.append(" l8 0 l-4 5 z\" fill=\"#59636e\"/>");
  }

  std::string& mSvg;
  const SiteRun& mRun;
  std::size_t mDrawn = 0;
  std::size_t mCuts = 0;
};

}  // namespace

std::string WithoutAccessKey(std::string_view caption) {
  std::string shown;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    const bool isMark = caption[i] == '&';
    const bool isDoubled = isMark && caption.substr(i + 1).starts_with('&');
    i += isDoubled;
    if (!isMark || isDoubled) shown += caption[i];
  }
  return shown;
}

void AppendFormPicture(std::string& html, const SiteRun& run, const Component& form) {
  if (!form.VBControl || !form.SourceForm) return;
  std::string svg;
  if (!FormPainter(svg, run).Paint(form)) return;
  html.append("<div class=\"form-picture\">\n").append(svg).append("</div>\n");
}

}  // namespace vendrel::site
