"use strict";
// Lists the pages that hold all the words: those with them in their name first, then in their summary, then elsewhere.
const pages = JSON.parse(document.getElementById("pages").textContent);
const box = document.querySelector("input[type=search]");
const list = document.getElementById("found");
const contents = document.getElementById("contents");
for (const page of pages) page.texts = [page.name, page.summary + " " + page.kind, page.more].map(text => text.toLowerCase());

function rank(page, words) {
  let worst = 0;
  for (const word of words) {
    const place = page.texts[0] === word ? 0 : page.texts.findIndex(text => text.includes(word)) + 1;
    if (place === 0 && page.texts[0] !== word) return -1;
    worst = Math.max(worst, place);
  }
  return worst;
}

function search() {
  const words = box.value.toLowerCase().split(/\s+/).filter(word => word);
  contents.hidden = words.length > 0;
  list.textContent = "";
  if (words.length === 0) return;
  const found = pages.map(page => [rank(page, words), page]).filter(([place]) => place >= 0);
  found.sort((a, b) => a[0] - b[0]);
  const count = document.createElement("p");
  count.className = "soft";
  count.textContent = found.length === 0 ? "Nothing found." : found.length === 1 ? "1 page" : found.length + " pages";
  list.append(count);
  for (const [, page] of found.slice(0, 200)) {
    const name = document.createElement("dt"), text = document.createElement("dd"), link = document.createElement("a");
    link.href = page.page;
    link.textContent = page.name;
    name.append(link);
    text.textContent = page.summary + " (" + page.kind + ")";
    list.append(name, text);
  }
}

box.value = new URLSearchParams(location.search).get("q") || "";
box.addEventListener("input", () => {
  search();
  // The address holds the words, so that the way back from a page leads to what was found.
  history.replaceState(null, "", box.value ? "?q=" + encodeURIComponent(box.value) : location.pathname);
});
box.form.addEventListener("submit", event => {
  event.preventDefault();
  const first = list.querySelector("a");
  if (first) location.href = first.href;
});
search();
