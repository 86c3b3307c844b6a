// Shows the sections that contain all the words in the search box: those with a word in the heading first.
'use strict';

const box = document.getElementById('search');
const list = document.getElementById('found');
const up = box.dataset.up;
const limit = 20;

// How well a row [link, page, heading, text] fits the words; 0 if one of them is missing.
function score(row, words) {
    const names = (row[1] + ' ' + row[2]).toLowerCase();
    const text = row[3].toLowerCase();
    let sum = 0;
    for (const word of words) {
        if (row[2].toLowerCase() === word) sum += 8;
        else if (names.includes(word)) sum += 4;
        else if (text.includes(word)) sum += 1;
        else return 0;
    }
    return sum;
}

// The text around the first word.
function excerpt(text, words) {
    const at = Math.max(0, ...words.map((word) => text.toLowerCase().indexOf(word)));
    const start = Math.max(0, at - 40);
    return (start > 0 ? '\u2026 ' : '') + text.slice(start, start + 140) + (start + 140 < text.length ? ' \u2026' : '');
}

function line(row, words) {
    const item = document.createElement('li');
    const link = document.createElement('a');
    link.href = up + row[0];
    link.textContent = row[1] === row[2] ? row[1] : row[1] + ': ' + row[2];
    link.addEventListener('click', () => { list.hidden = true; });
    const text = document.createElement('p');
    text.textContent = excerpt(row[3], words);
    item.append(link, text);
    return item;
}

function search() {
    const words = box.value.toLowerCase().split(/\s+/).filter((word) => word !== '');
    list.replaceChildren();
    list.hidden = words.length === 0;
    if (words.length === 0) return;
    const rows = searchIndex.map((row) => [score(row, words), row]).filter(([points]) => points > 0);
    rows.sort((a, b) => b[0] - a[0]);
    list.append(...rows.slice(0, limit).map(([, row]) => line(row, words)));
    if (rows.length === 0) {
        const nothing = document.createElement('li');
        nothing.textContent = 'Nothing found.';
        list.append(nothing);
    }
}

box.addEventListener('input', search);
box.addEventListener('keydown', (event) => {
    if (event.key === 'Escape') {
        box.value = '';
        search();
    } else if (event.key === 'Enter') {
        const first = list.querySelector('a');
        if (first) first.click();
    }
});
