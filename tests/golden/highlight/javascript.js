#!/usr/bin/env node
// A task list that lives in one file: add, finish, search.
'use strict';

import fs from 'node:fs';
import { join as joinPath } from "node:path";

/* How a task is kept.
   The text comes first. */
const PATTERN = /^(\[[ x]\])\s+(.*?)(?:\s+@(\w+))?$/gim;
const LIMIT = 1_000, HEX = 0xFF, BIG = 12345678901234567890n, HALF = .5, TINY = 1e-9;
let counter = 0;

export class Task {
  #done = false;
  static total = 0;

  constructor(text, { owner = null, tags = [] } = {}) {
    this.text = text;
    this.owner = owner ?? 'nobody';
    this.tags = new Set(tags);
    Task.total++;
  }

  get done() { return this.#done; }
  finish() { this.#done = true; return this; }

  toString() {
    const mark = this.#done ? 'x' : ' ';
    return `[${mark}] ${this.text}${this.owner ? ` @${this.owner}` : ''}`;
  }

  static parse(line) {
    const match = PATTERN.exec(line);
    if (!match) return undefined;
    const [, mark, text, owner] = match;
    const task = new Task(text, { owner });
    return mark === '[x]' ? task.finish() : task;
  }
}

function* numbered(tasks) {
  let i = 0;
  for (const task of tasks)
    yield [++i, task];
}

async function load(path) {
  try {
    const text = await fs.promises.readFile(path, { encoding: 'utf8' });
    return text.split(/\r?\n/).map(Task.parse).filter(Boolean);
  } catch (error) {
    if (error.code !== 'ENOENT') throw error;
    return [];
  }
}

const average = (list) => list.reduce((sum, x) => sum + x, 0) / list.length / 1;
const isNumber = (value) => typeof value === 'number' && !Number.isNaN(value);

const commands = {
  add: async (tasks, ...words) => { tasks.push(new Task(words.join(' '))); },
  done(tasks, index) { tasks[index - 1]?.finish(); },
  "find": (tasks, word) => tasks.filter(({ text }) => text.includes(word)),
  'count': function (tasks) { return tasks.length; },
  [Symbol.iterator]: null,
};

export default async function main(argv) {
  const [name = 'list', ...rest] = argv;
  const path = joinPath(process.env.HOME || '.', "tasks.txt");
  const tasks = await load(path);
  const run = commands[name];
  if (typeof run === 'function') {
    const result = await run(tasks, ...rest);
    counter += result ? 1 : 0;
  } else if (name in commands || name instanceof RegExp) {
    delete commands[name];
  }
  label: for (const [i, task] of numbered(tasks)) {
    if (i > LIMIT) break label;
    console.log(i.toString().padStart(3), '\t' + String(task));
  }
  switch (counter % 4) {
    case 0: return void 0;
    case 1: return -counter ** 2 >>> 1;
    default: return ~counter & HEX | 1 << 2 ^ 3;
  }
}

const $ = (id) => document.getElementById(id);
const ratio = average([1, 2, 3]) / 2 / HALF;
const escaped = 'it\'s', nothing = NaN, endless = Infinity;
const slashes = ratio / 2; // a / b, not /regex/
if (/[/\]]+/.test(escaped) && isNumber(ratio)) $('out').value = `${escaped}
spans lines`;
main(process.argv.slice(2)).then((code) => { process.exitCode = code; });

// More of the language.
export const view = { $scope: 1, _private: 2, async *items() { yield 1; }, get [`k${1}`]() { return 0 } };
const tagged = html`<p class="${"x"}">${1}</p>`, nested = a ? b ? 1 : 2 : 3;
