// A store with typed events and an undo list.
import type { Reader } from './reader';
import * as util from "./util";

export type Key = string | number;
export interface Listener<T> {
  readonly name: string;
  priority?: number;
  handle(event: T, at: Date): void;
}

enum Level { Low = 1, Middle = 0b10, High = 0x1F }

declare const VERSION: string;
const LIMIT: number = 1_000;

/* One change,
   and how it is taken back. */
type Change<T> = { key: Key; before: T | undefined; after: T };
type Mapper<A, B> = (value: A) => B;
type Partially<T> = { [K in keyof T]?: T[K] };

export abstract class Store<T extends object> implements Iterable<T> {
  private readonly values = new Map<Key, T>();
  protected changes: Change<T>[] = [];
  static count: number = 0;

  constructor(private readonly listeners: Listener<Change<T>>[] = []) {
    Store.count += 1;
  }

  abstract validate(value: T): asserts value is T;

  get size(): number { return this.values.size; }

  set(key: Key, after: T): this {
    this.validate(after);
    const before = this.values.get(key);
    this.values.set(key, after);
    const change: Change<T> = { key, before, after };
    this.changes.push(change);
    for (const listener of this.listeners)
      listener.handle(change, new Date());
    return this;
  }

  undo(): boolean {
    const change = this.changes.pop();
    if (change === undefined) return false;
    if (change.before === undefined) this.values.delete(change.key);
    else this.values.set(change.key, change.before);
    return true;
  }

  *[Symbol.iterator](): Iterator<T> {
    yield* this.values.values();
  }

  map<U>(mapper: Mapper<T, U>): U[] {
    return Array.from(this.values.values(), mapper);
  }
}

interface Person { name: string; age: number; mail?: string | null }

class People extends Store<Person> {
  validate(value: Person): asserts value is Person {
    if (!/^[\w.]+@[\w.]+$/i.test(value.mail ?? 'a@b')) {
      throw new TypeError(`bad mail: ${value.mail}`);
    }
  }

  oldest(): Person | undefined {
    let found: Person | undefined;
    for (const person of this) {
      if (!found || person.age > found.age) found = person;
    }
    return found;
  }
}

function isReader(value: unknown): value is Reader {
  return typeof value === 'object' && value !== null && 'read' in value;
}

export async function main(args: readonly string[]): Promise<number> {
  const people = new People([{ name: 'log', handle: (e) => console.log(e.key) }]);
  people.set(1, { name: "Ada", age: 36, mail: null }).set('two', { name: 'Bob', age: 7e1 });
  const names = people.map(({ name }) => name.toUpperCase());
  const level = args.length > LIMIT / 2 / 5 ? Level.High : Level.Low;
  const source: unknown = await util.open(args[0]!);
  if (isReader(source)) {
    const text = await source.read();
    names.push(...text.split(/,\s*/));
  }
  switch (level) {
    case Level.Low: return people.size;
    case Level.High: return names.length as number;
    default: return -1;
  }
}

export const once = <T,>(make: () => T): (() => T) => {
  let value: T | undefined;
  return () => (value ??= make());
};
