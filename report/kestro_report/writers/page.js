"use strict";
(() => {
  const byId = (id) => document.getElementById(id);
  const all = (selector, within = document) => [...within.querySelectorAll(selector)];
  const tools = byId("tools"), query = byId("query"), sectionChoice = byId("section"), count = byId("count");
  const kinds = all("input.kind"), dialog = byId("keys");
  const ROW_KINDS = { p: "passed", f: "failed", n: "unsupported", u: "unknown" };
  const lower = (element) => element.textContent.toLowerCase();

  // The report is indexed when it is searched for the first time: a page may hold a hundred thousand checks.
  let index = null;
  const makeIndex = () => {
    const runs = all("article").map((article) => ({
      article,
      number: article.dataset.n,
      head: lower(article.querySelector("header")),
      cards: all(".failures > li", article).map((element) => (
        { element, section: element.dataset.s, text: lower(element) })),
      sections: all("details.section", article).map((element) => ({
        element,
        section: element.dataset.s,
        wasOpen: false,
        rows: all("tbody tr", element).map((row) => ({ element: row, kind: ROW_KINDS[row.className], text: null })),
      })),
    }));
    const rows = all("#runs tbody tr").map((element) => (
      { element, number: element.dataset.n, kinds: element.dataset.k.split(" "), text: lower(element) }));
    return { runs, rows };
  };

  // A check is found by its section, its name, what it means, and the line behind it.
  const textOf = (row, section) => {
    if (row.text === null) {
      const link = row.element.querySelector("a");
      const line = link && byId(link.hash.slice(1));
      row.text = `${section} ${row.element.textContent} ${line ? line.textContent : ""}`.toLowerCase();
    }
    return row.text;
  };

  const wanted = () => ({
    words: query.value.toLowerCase().split(/\s+/).filter(Boolean),
    kinds: new Set(kinds.filter((box) => box.checked).map((box) => box.value)),
    section: sectionChoice.value,
    get isAll() { return !this.words.length && this.kinds.size === kinds.length && !this.section; },
  });

  const has = (text, words) => words.every((word) => text.includes(word));

  const filterSection = (each, want, isWhole, tally) => {
    const fits = !want.section || each.section === want.section;
    let shown = 0;
    for (const row of each.rows) {
      const show = fits && want.kinds.has(row.kind) &&
        (isWhole || has(textOf(row, each.section), want.words));
      row.element.hidden = !show;
      shown += show;
    }
    tally.rows += each.rows.length;
    tally.shown += shown;
    const isEmpty = !each.rows.length && fits && isWhole && want.kinds.size === kinds.length;
    each.element.hidden = !shown && !isEmpty;
    each.isSifted = want.section || want.kinds.size < kinds.length || !isWhole;
    each.isFound = shown > 0;
    return shown;
  };

  const filterRun = (run, want, tally) => {
    const isWhole = has(run.head, want.words);
    let shown = 0;
    for (const card of run.cards) {
      const show = want.kinds.has("failed") && (!want.section || card.section === want.section) &&
        (isWhole || has(card.text, want.words));
      card.element.hidden = !show;
      shown += show;
    }
    for (const each of run.sections) { shown += filterSection(each, want, isWhole, tally); }
    run.isFound = shown > 0 || (isWhole && !want.section && want.kinds.size === kinds.length);
    run.article.hidden = !run.isFound;
  };

  // What is found is shown at once, unless it is more than anybody reads: to open it all would take seconds.
  const MOST_OPENED = 500;
  const openFound = (found) => {
    for (const run of index.runs) {
      for (const each of run.sections) {
        each.element.open = each.isSifted && found <= MOST_OPENED ? each.isFound : each.wasOpen;
      }
    }
  };

  // What was open before the first filter is open again behind the last one.
  const rememberOpen = () => {
    for (const run of index.runs) { for (const each of run.sections) { each.wasOpen = each.element.open; } }
  };

  const runKindFits = (row, want) => row.kinds.some((kind) => want.kinds.has(kind) &&
    (kind === "passed" || kind === "failed" || !(want.kinds.has("passed") || want.kinds.has("failed"))));

  let isFiltered = false;
  const filter = () => {
    if (index === null) { index = makeIndex(); }
    const want = wanted(), tally = { rows: 0, shown: 0 };
    if (!isFiltered) { rememberOpen(); }
    isFiltered = !want.isAll;
    for (const run of index.runs) { filterRun(run, want, tally); }
    openFound(tally.shown);
    const found = new Set(index.runs.filter((run) => run.isFound).map((run) => run.number));
    let runs = 0;
    for (const row of index.rows) {
      const show = runKindFits(row, want) && (found.has(row.number) || (!want.section && has(row.text, want.words)));
      row.element.hidden = !show;
      runs += show;
    }
    const number = (value) => value.toLocaleString("en");
    const said = [`${number(tally.shown)} of ${number(tally.rows)} checks and unknown lines`];
    if (index.rows.length) { said.unshift(`${number(runs)} of ${number(index.rows.length)} runs`); }
    count.textContent = want.isAll ? "" : `Shown: ${said.join(", ")}.`;
  };

  let waiting = 0;
  const filterSoon = () => {
    clearTimeout(waiting);
    waiting = setTimeout(filter, 120);
  };

  const reset = () => {
    query.value = "";
    sectionChoice.value = "";
    for (const box of kinds) { box.checked = true; }
    filter();
  };

  const onlyFailed = () => {
    const isOnly = kinds.every((box) => box.checked === (box.value === "failed"));
    for (const box of kinds) { box.checked = isOnly || box.value === "failed"; }
    filter();
  };

  const setOpen = (open) => {
    for (const section of all("details.section, details.values")) { section.open = open; }
    if (index) { rememberOpen(); }
  };

  // Colours: the choice is kept where the browser lets a page keep something.
  const THEMES = ["system", "light", "dark"];
  const setTheme = (theme) => {
    if (theme === "system") { delete document.documentElement.dataset.theme; }
    else { document.documentElement.dataset.theme = theme; }
    byId("theme").textContent = `Colours: ${theme}`;
  };
  const kept = (name, value) => {
    try {
      if (value !== undefined) { localStorage.setItem(name, value); }
      return localStorage.getItem(name);
    } catch { return null; }
  };
  const nextTheme = () => {
    const now = document.documentElement.dataset.theme || "system";
    const next = THEMES[(THEMES.indexOf(now) + 1) % THEMES.length];
    setTheme(next);
    kept("kestro_report theme", next);
  };

  // A line of the raw text lies in a closed part: that is opened, whatever the filter hides.
  const reveal = () => {
    const target = location.hash.length > 1 && byId(decodeURIComponent(location.hash.slice(1)));
    if (!target) { return; }
    for (let above = target; above; above = above.parentElement) {
      if (above.tagName === "DETAILS") { above.open = true; }
      above.hidden = false;
    }
    if (!target.hasAttribute("tabindex")) { target.setAttribute("tabindex", "-1"); }
    target.scrollIntoView({ block: "center" });
    target.focus({ preventScroll: true });
  };

  const goToFailure = (step) => {
    const cards = all(".failures > li").filter((card) => card.offsetParent !== null);
    if (!cards.length) { return; }
    const at = cards.indexOf(document.activeElement.closest(".failures > li"));
    const next = at < 0 ? (step > 0 ? 0 : cards.length - 1) : (at + step + cards.length) % cards.length;
    cards[next].focus();
    cards[next].scrollIntoView({ block: "center" });
  };

  const KEYS = {
    "/": () => query.focus(),
    "?": () => dialog.showModal(),
    n: () => goToFailure(1),
    p: () => goToFailure(-1),
    o: () => setOpen(true),
    c: () => setOpen(false),
    f: onlyFailed,
    t: nextTheme,
  };
  document.addEventListener("keydown", (event) => {
    if (event.ctrlKey || event.altKey || event.metaKey || dialog.open) { return; }
    if (event.key === "Escape" && document.activeElement === query) {
      query.value = "";
      filter();
      query.blur();
      return;
    }
    const isTyping = event.target.matches("input[type=search], select, textarea");
    if (!isTyping && byId("keys-on").checked && Object.hasOwn(KEYS, event.key)) {
      event.preventDefault();
      KEYS[event.key]();
    }
  });

  query.addEventListener("input", filterSoon);
  sectionChoice.addEventListener("change", filter);
  for (const box of kinds) { box.addEventListener("change", filter); }
  byId("reset").addEventListener("click", reset);
  byId("open").addEventListener("click", () => setOpen(true));
  byId("close").addEventListener("click", () => setOpen(false));
  byId("theme").addEventListener("click", nextTheme);
  byId("help").addEventListener("click", () => dialog.showModal());
  window.addEventListener("hashchange", reveal);
  // A second click on a link to the same line changes no address.
  document.addEventListener("click", (event) => {
    const link = event.target.closest("a[href^='#']");
    if (link && link.hash === location.hash) { reveal(); }
  });

  setTheme(THEMES.includes(kept("kestro_report theme")) ? kept("kestro_report theme") : "system");
  tools.hidden = false;
  reveal();
})();
