// Search as one types, the choice of light and dark, and buttons that copy. Pages work without it.
// The names of the site lie in pieces, "search/0.js" and on, sorted; "search/pieces.js" tells with
// which name each begins. They are scripts, as a page opened from a file may load nothing else.
(function () {
  "use strict";
  var root = document.currentScript.getAttribute("data-root") || "";
  var most = 60;

  // ---- Light and dark ---------------------------------------------------------------------------

  var themes = ["system", "light", "dark"];
  function kept() {
    try { return localStorage.getItem("site-theme") || "system"; } catch (e) { return "system"; }
  }
  function show(theme) {
    if (theme === "system") document.documentElement.removeAttribute("data-theme");
    else document.documentElement.setAttribute("data-theme", theme);
  }
  show(kept());

  function addThemeButton(box) {
    var button = document.createElement("button");
    button.type = "button";
    button.className = "theme";
    function label() {
      button.textContent = { system: "Auto", light: "Light", dark: "Dark" }[kept()];
      button.setAttribute("aria-label", "Colours: " + button.textContent + ". Change");
    }
    button.addEventListener("click", function () {
      var next = themes[(themes.indexOf(kept()) + 1) % themes.length];
      try { localStorage.setItem("site-theme", next); } catch (e) { /* lasts for this page */ }
      show(next);
      label();
    });
    label();
    box.appendChild(button);
  }

  // ---- The names --------------------------------------------------------------------------------

  var starts = null, folders = null, pieces = [], wanted = {}, waiting = [];
  window.siteSearch = {
    pieces: function (names, paths) { starts = names; folders = paths; },
    piece: function (number, rows) { pieces[number] = rows; }
  };
  function load(file, done) {
    if (wanted[file]) {
      if (wanted[file] === "there") done(); else wanted[file].push(done);
      return;
    }
    wanted[file] = [done];
    var script = document.createElement("script");
    script.src = root + "search/" + file;
    script.onload = script.onerror = function () {
      var all = wanted[file];
      wanted[file] = "there";
      all.forEach(function (each) { each(); });
    };
    document.head.appendChild(script);
  }
  // The pieces in which names begin with a text.
  function piecesWith(text) {
    var found = [];
    for (var i = 0; i < starts.length; ++i) {
      var next = starts[i + 1];
      if (starts[i].slice(0, text.length) > text) break;
      if (next === undefined || next >= text) found.push(i);
    }
    return found;
  }

  // A row is [folded name, name or 0 where it is the same, kind, folder, rest of the address].
  function rankOf(row, query, parts) {
    var name = row[0];
    if (name === query) return 0;
    if (name.lastIndexOf(query, 0) === 0) return 1;
    var at = name.indexOf(query);
    if (at > 0) return isStart(row[1] || name, at) ? 2 : 3;
    if (parts.length > 1) {
      var last = parts[parts.length - 1], owner = parts.slice(0, -1).join("/");
      if (name.indexOf(last) >= 0 && ownerOf(row).toLowerCase().indexOf(owner) >= 0) return 1;
    }
    return -1;
  }
  function isStart(name, at) {
    var c = name.charAt(at);
    return c !== c.toLowerCase() || "._-".indexOf(name.charAt(at - 1)) >= 0;
  }
  function ownerOf(row) { return folders[row[3]].replace(/\/$/, ""); }

  function search(query) {
    var parts = query.split(/[.\/~ ]+/).filter(Boolean), found = [[], [], [], []];
    for (var p = 0; p < pieces.length; ++p) {
      var rows = pieces[p] || [];
      for (var i = 0; i < rows.length; ++i) {
        var rank = rankOf(rows[i], query, parts);
        if (rank < 0 || found[rank].length >= most) continue;
        found[rank].push(rows[i]);
      }
    }
    return [].concat(found[0], found[1], found[2], found[3]).slice(0, most);
  }

  // ---- The box ----------------------------------------------------------------------------------

  function addSearch() {
    var box = document.getElementById("search");
    if (!box) return;
    var input = document.createElement("input");
    input.type = "search";
    input.placeholder = "Search (press /)";
    input.setAttribute("aria-label", "Search all names");
    input.setAttribute("role", "combobox");
    input.setAttribute("aria-expanded", "false");
    input.setAttribute("aria-controls", "found");
    input.autocomplete = "off";
    input.spellcheck = false;
    var list = document.createElement("ul");
    list.id = "found";
    list.setAttribute("role", "listbox");
    list.setAttribute("aria-label", "Names found");
    box.appendChild(input);
    box.appendChild(list);
    addThemeButton(box.parentNode);

    var at = -1, asked = "";
    function clear() { list.textContent = ""; at = -1; input.setAttribute("aria-expanded", "false"); input.removeAttribute("aria-activedescendant"); }
    function tell(text) {
      clear();
      var item = document.createElement("li");
      item.className = "told";
      item.textContent = text;
      list.appendChild(item);
    }
    function choose(to) {
      var items = list.querySelectorAll("li[role=option]");
      if (!items.length) return;
      if (items[at]) { items[at].classList.remove("at"); items[at].setAttribute("aria-selected", "false"); }
      at = (to + items.length) % items.length;
      items[at].classList.add("at");
      items[at].setAttribute("aria-selected", "true");
      items[at].scrollIntoView({ block: "nearest" });
      input.setAttribute("aria-activedescendant", items[at].id);
    }
    function span(className, text) {
      var element = document.createElement("span");
      element.className = className;
      element.textContent = text;
      return element;
    }
    function showFound(rows, isWhole) {
      clear();
      rows.forEach(function (row, i) {
        var item = document.createElement("li"), link = document.createElement("a");
        item.id = "found-" + i;
        item.setAttribute("role", "option");
        item.setAttribute("aria-selected", "false");
        link.href = root + folders[row[3]] + row[4];
        link.tabIndex = -1;
        link.appendChild(span("kind", row[2]));
        link.appendChild(span("name", row[1] || row[0]));
        link.appendChild(span("of", ownerOf(row)));
        item.appendChild(link);
        list.appendChild(item);
      });
      if (!rows.length) tell(isWhole ? "Nothing has that name." : "Looking …");
      else { input.setAttribute("aria-expanded", "true"); choose(0); }
    }
    function update() {
      var query = input.value.trim().toLowerCase();
      if (query === asked) return;
      asked = query;
      if (!query) return clear();
      load("pieces.js", function () {
        if (!starts) return tell("The names of this site could not be read.");
        var last = query.split(/[.\/~ ]+/).filter(Boolean).pop() || query;
        var first = piecesWith(last), rest = [];
        for (var i = 0; i < starts.length; ++i) if (first.indexOf(i) < 0) rest.push(i);
        function step(numbers, done) {
          if (!numbers.length || query !== asked) return done();
          load(numbers[0] + ".js", function () { step(numbers.slice(1), done); });
        }
        step(first, function () {
          if (query !== asked) return;
          showFound(search(query), !rest.length);
          // Names that hold the text further on lie in any piece.
          step(query.length > 1 ? rest.slice(0, 40) : [], function () {
            if (query === asked) showFound(search(query), true);
          });
        });
      });
    }
    input.addEventListener("input", update);
    input.addEventListener("focus", function () { load("pieces.js", function () {}); });
    input.addEventListener("keydown", function (event) {
      if (event.key === "ArrowDown") choose(at + 1);
      else if (event.key === "ArrowUp") choose(at - 1);
      else if (event.key === "Escape") { input.value = ""; asked = ""; clear(); input.blur(); return; }
      else if (event.key === "Enter") {
        var link = list.querySelector("li.at a");
        if (link) link.click();
      } else return;
      event.preventDefault();
    });
    document.addEventListener("keydown", function (event) {
      var typing = /^(INPUT|TEXTAREA|SELECT)$/.test(event.target.tagName);
      if (typing || event.ctrlKey || event.altKey || event.metaKey) return;
      if (event.key === "/" || event.key === "s") { event.preventDefault(); input.focus(); input.select(); }
    });
    document.addEventListener("click", function (event) {
      if (!box.contains(event.target)) { clear(); asked = ""; }
    });
  }

  // ---- Buttons ----------------------------------------------------------------------------------

  function addCopyButtons() {
    document.querySelectorAll("[data-copy]").forEach(function (element) {
      var button = document.createElement("button");
      button.type = "button";
      button.className = "copy";
      button.textContent = "Copy";
      button.setAttribute("aria-label", "Copy the full name");
      button.addEventListener("click", function () {
        var text = element.getAttribute("data-copy");
        function done() { button.textContent = "Copied"; }
        if (navigator.clipboard) navigator.clipboard.writeText(text).then(done, function () {});
      });
      element.parentNode.insertBefore(button, element.nextSibling);
    });
  }
  // A line, or row, within something folded can be linked to.
  function unfold() {
    var id = decodeURIComponent(location.hash.slice(1));
    var target = id && document.getElementById(id);
    for (var each = target; each; each = each.parentNode) if (each.tagName === "DETAILS") each.open = true;
    if (target) target.scrollIntoView();
  }
  addSearch();
  addCopyButtons();
  addEventListener("hashchange", unfold);
  if (location.hash) unfold();
}());
