// SPDX-License-Identifier: Apache-2.0
// Finds sections of the guide by words. What it looks through comes from search-index.js, which is made with the guide:
// a page that is opened as a file may not read other pages. Old engines read this.
(function () {
    "use strict";

    var snippetLength = 160;
    var most = 30;

    function wordsOf(text) {
        return text.toLowerCase().split(/\s+/).filter(Boolean);
    }

    function contains(text, word) {
        return text.toLowerCase().indexOf(word) >= 0;
    }

    /// 0 when a word is nowhere in the section; a word in a heading counts more than one in the text.
    function rank(section, words) {
        var sum = 0;
        for (var i = 0; i < words.length; ++i) {
            if (contains(section.title, words[i])) {
                sum += 10;
            } else if (contains(section.page, words[i])) {
                sum += 5;
            } else if (contains(section.text, words[i])) {
                sum += 1;
            } else {
                return 0;
            }
        }
        return sum;
    }

    function find(words) {
        return window.guideIndex.map(function (section, place) {
            return {section: section, place: place, rank: words.length ? rank(section, words) : 0};
        }).filter(function (hit) {
            return hit.rank > 0;
        }).sort(function (one, other) {
            return other.rank - one.rank || one.place - other.place;
        });
    }

    function snippet(text, words) {
        var first = text.length;
        words.forEach(function (word) {
            var at = text.toLowerCase().indexOf(word);
            if (at >= 0) {
                first = Math.min(first, at);
            }
        });
        var start = first === text.length ? 0 : Math.max(0, text.lastIndexOf(" ", Math.max(0, first - 50)) + 1);
        var part = text.substr(start, snippetLength);
        return (start ? "… " : "") + part + (start + snippetLength < text.length ? " …" : "");
    }

    function element(name, text) {
        var made = document.createElement(name);
        made.textContent = text;
        return made;
    }

    function item(section, words) {
        var made = document.createElement("li");
        var link = element("a", section.page === section.title ? section.page : section.page + ": " + section.title);
        link.href = section.address;
        made.appendChild(link);
        made.appendChild(element("p", snippet(section.text, words)));
        return made;
    }

    function countText(words, count) {
        if (!words.length) {
            return "Type a word.";
        }
        if (count > most) {
            return count + " sections, the best " + most + " of them:";
        }
        return count === 1 ? "1 section:" : count + " sections" + (count ? ":" : ".");
    }

    function show() {
        var words = wordsOf(document.getElementById("query").value);
        var hits = find(words);
        var results = document.getElementById("results");
        results.textContent = "";
        hits.slice(0, most).forEach(function (hit) {
            results.appendChild(item(hit.section, words));
        });
        document.getElementById("count").textContent = countText(words, hits.length);
    }

    document.getElementById("search").onsubmit = function () {
        return false;
    };
    document.getElementById("query").oninput = show;
    show();
}());
