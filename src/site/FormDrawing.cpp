// Forms keep places in units of their container, mostly twips: 1440 an inch, 15 a dot.

#include "site/FormDrawing.h"

#include <algorithm>

#include "core/Ascii.h"
#include "site/FormParts.h"
#include "site/SiteHtml.h"
#include "site/SiteRun.h"

namespace vendrel::site {
namespace {

constexpr std::size_t kMostDrawn = 2000;
constexpr int kDeepestDrawn = 40;
constexpr double kMenuHeight = 20;

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
      mSvg.append(" fill=\"#ffffff\" stroke=\"#59636e\"/>");
      const std::string value = TextOf(properties, "value");
      if (!value.empty() && value != "0") PaintMark(isRound, height / 2);
      mSvg.append(Label(18, middle, caption, width - 18));
    } else if (IsOneOfTypes(type, {"Frame"})) {
      PaintFrame(ColourOf(properties, "backcolor", "#f0f0f0"), caption, width, height);
    } else if (IsOneOfTypes(type, {"Shape"})) {
      PaintShape(properties, width, height);
    } else if (IsOneOfTypes(type, {"HScrollBar", "VScrollBar"})) {
      PaintScrollBar(width, height);
    } else if (IsOneOfTypes(type, {"PictureBox"})) {
      const bool hasBorder = TextOf(properties, "borderstyle") != "0";
      mSvg.append(Rectangle(width, height, ColourOf(properties, "backcolor", "#f0f0f0"),
                            hasBorder ? "#9aa4ae" : "none"));
    } else {
      PaintField(control, type, properties, width, height);
    }
  }

  // What is chosen.
  void PaintMark(bool isRound, double middle) {
    const std::string y = Dots(middle);
    if (isRound)
      mSvg.append("<circle cx=\"7\" cy=\"").append(y).append("\" r=\"2.5\" fill=\"#33393f\"/>");
    else
      mSvg.append("<path d=\"M4 ")
          .append(y)
          .append(" l2.5 3 l4 -6\" fill=\"none\" stroke=\"#33393f\" stroke-width=\"1.6\"/>");
  }

  // Rectangle, square, oval, circle, and the first two with round corners.
  void PaintShape(const PropertyMap& properties, double width, double height) {
    const double shape = NumberOf(properties, "shape", 0);
    const bool isRound = shape == 2 || shape == 3;
    const bool isEven = shape == 1 || shape == 3 || shape == 5;
    const double left = isEven ? std::max(0.0, width - height) / 2 : 0;
    const double top = isEven ? std::max(0.0, height - width) / 2 : 0;
    const double x = width - 2 * left, y = height - 2 * top;
    mSvg.append("<rect x=\"").append(Dots(left)).append("\" y=\"").append(Dots(top));
    mSvg.append("\" width=\"").append(Dots(x)).append("\" height=\"").append(Dots(y));
    mSvg.append("\" rx=\"").append(Dots(isRound ? x / 2 : shape >= 4 ? 6 : 0)).append("\" ry=\"");
    mSvg.append(Dots(isRound ? y / 2 : shape >= 4 ? 6 : 0)).append("\" fill=\"none\" stroke=\"");
    mSvg.append(ColourOf(properties, "bordercolor", "#444444")).append("\"/>");
  }

  void PaintScrollBar(double width, double height) {
    mSvg.append(Rectangle(width, height, "#e1e5ea", "#9aa4ae"));
    const bool isFlat = width >= height;
    const double arrow = std::min(isFlat ? width : height, 14.0) / 2;
    const std::string middle = Dots((isFlat ? height : width) / 2);
    const std::string end = Dots((isFlat ? width : height) - arrow);
    mSvg.append("<path fill=\"#59636e\" d=\"");
    if (isFlat)
      mSvg.append("M4 " + middle + " l5 -4 v8 z M" + end + " " + middle + " m3 0 l-5 -4 v8 z");
    else
      mSvg.append("M" + middle + " 4 l-4 5 h8 z M" + middle + " " + end + " m0 3 l-4 -5 h8 z");
    mSvg.append("\"/>");
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

void AppendFormPicture(std::string& html, const SiteRun& run, const Component& form) {
  if (!form.VBControl || !form.SourceForm) return;
  std::string svg;
  if (!FormPainter(svg, run).Paint(form)) return;
  html.append("<div class=\"form-picture\">\n").append(svg).append("</div>\n");
}

}  // namespace vendrel::site
