// Shows the sections that contain all the words in the search box: those with a word in the heading first.
// In plain ECMAScript 5: the browsers that older versions of Windows bring know no more.
'use strict';

var box = document.getElementById('search');
var list = document.getElementById('found');
var up = box.getAttribute('data-up');
var limit = 20;

function has(text, word) {
    return text.indexOf(word) >= 0;
}

// How well a row [link, page, heading, text] fits the words; 0 if one of them is missing.
function score(row, words) {
    var names = (row[1] + ' ' + row[2]).toLowerCase();
    var text = row[3].toLowerCase();
    var sum = 0;
    for (var at = 0; at < words.length; at++) {
        if (row[2].toLowerCase() === words[at]) sum += 8;
        else if (has(names, words[at])) sum += 4;
        else if (has(text, words[at])) sum += 1;
        else return 0;
    }
    return sum;
}

// The text around the word that stands last.
function excerpt(text, words) {
    var at = words.reduce(function (last, word) { return Math.max(last, text.toLowerCase().indexOf(word)); }, 0);
    var start = Math.max(0, at - 40);
    return (start > 0 ? '\u2026 ' : '') + text.slice(start, start + 140) + (start + 140 < text.length ? ' \u2026' : '');
}

function line(row, words) {
    var item = document.createElement('li');
    var link = document.createElement('a');
    link.href = up + row[0];
    link.textContent = row[1] === row[2] ? row[1] : row[1] + ': ' + row[2];
    link.addEventListener('click', function () { list.hidden = true; });
    var text = document.createElement('p');
    text.textContent = excerpt(row[3], words);
    item.appendChild(link);
    item.appendChild(text);
    return item;
}

function search() {
    var words = box.value.toLowerCase().split(/\s+/).filter(function (word) { return word !== ''; });
    while (list.firstChild) list.removeChild(list.firstChild);
    list.hidden = words.length === 0;
    if (words.length === 0) return;
    var rows = searchIndex.map(function (row) { return [score(row, words), row]; });
    rows = rows.filter(function (one) { return one[0] > 0; });
    rows.sort(function (a, b) { return b[0] - a[0]; });
    rows.slice(0, limit).forEach(function (one) { list.appendChild(line(one[1], words)); });
    if (rows.length === 0) {
        var nothing = document.createElement('li');
        nothing.textContent = 'Nothing found.';
        list.appendChild(nothing);
    }
}

box.addEventListener('input', search);
box.addEventListener('keydown', function (event) {
    if (event.key === 'Escape' || event.key === 'Esc') {
        box.value = '';
        search();
    } else if (event.key === 'Enter') {
        var first = list.querySelector('a');
        if (first) first.click();
    }
});
