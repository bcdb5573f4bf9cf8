// A bank of accounts with interest.
package store.bank;

import java.util.*;
import java.util.function.Function;
import static java.lang.Math.max;

/* What can go wrong.
   /* Comments do not nest. */
public class Bank implements Iterable<Bank.Account> {
    private static final int MAX_ACCOUNTS = 1_000;
    private static final long MASK = 0xFFL;
    static final double RATE = 1.5e-2, HALF = .5;
    private final Map<String, Account> accounts = new HashMap<>();
    private volatile boolean open = true;

    public enum Kind { SAVINGS, CURRENT, Other }

    public record Entry(String owner, long cents, char mark) {
        public Entry {
            if (cents < 0) throw new IllegalArgumentException("negative: " + cents);
        }
    }

    public interface Rule {
        boolean allows(Account account, long cents);
        default Rule and(Rule other) {
            return (a, c) -> allows(a, c) && other.allows(a, c);
        }
    }

    @FunctionalInterface
    interface Visitor<T extends Account> { void visit(T account); }

    public static class Account implements Comparable<Account> {
        final String owner;
        protected long cents = 0L;
        private final List<Entry> entries = new ArrayList<>();
        private Kind kind = Kind.CURRENT;

        Account(String owner) {
            this.owner = Objects.requireNonNull(owner, "an owner's name");
        }

        void book(long amount) {
            cents += amount;
            entries.add(new Entry(owner, Math.abs(amount), amount < 0 ? '-' : '+'));
        }

        @Override
        public int compareTo(Account other) {
            return owner.compareTo(other.owner);
        }

        @Override public String toString() {
            return String.format("%-10s %8d\t\"%s\"", owner, cents, kind.name());
        }
    }

    public Account open(final String owner) throws BankException {
        if (!open || accounts.size() >= MAX_ACCOUNTS)
            throw new BankException("full");
        return accounts.computeIfAbsent(owner, Account::new);
    }

    public void transfer(String from, String to, long cents) {
        Account source = accounts.get(from), target = accounts.get(to);
        if (source == null || target == null) {
            return;
        }
        synchronized (this) {
            source.book(-cents);
            target.book(cents);
        }
    }

    public long total() {
        long sum = 0;
        for (Account account : this) {
            sum += account.cents;
        }
        return sum;
    }

    @Override
    public Iterator<Account> iterator() {
        return new TreeSet<>(accounts.values()).iterator();
    }

    public <R> List<R> map(Function<? super Account, ? extends R> mapper) {
        var result = new ArrayList<R>();
        forEach(account -> result.add(mapper.apply(account)));
        return result;
    }

    static String help() {
        return """
            usage: bank "FILE"
              \"""quoted\"""
            """;
    }

    static int bits(int value) {
        int n = 0;
        do {
            n += value & 1;
            value >>>= 1;
        } while (value != 0);
        return n << 2 ^ ~value | (int) MASK % 7;
    }

    public static void main(String[] args) throws Exception {
        Bank bank = new Bank();
        bank.open("Ada").book(100_00);
        bank.open("Bob");
        bank.transfer("Ada", "Bob", (long) (2_500 * HALF));
        int i = 0;
        outer:
        for (String line : bank.map(Object::toString)) {
            switch (i++ % 3) {
                case 0: System.out.println(line); break;
                case 1: continue outer;
                default: System.err.println('\n' + help());
            }
        }
        assert bank.total() == 10000L : "the sum stays";
        Object value = args.length > 0 ? args[0] : null;
        if (value instanceof String text && !text.isEmpty()) {
            System.exit(max(bits(text.length()), 1));
        }
    }
}
