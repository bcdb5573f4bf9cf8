#nullable enable
// A small event log.
using System;
using System.Collections.Generic;
using System.Linq;
using Text = System.String;

namespace Store.Logging
{
    #region Types
    public enum Level : byte { Debug, Warning = 0x10, Error = 0b1010_0101 }

    /* One line
       of the log. */
    public record Entry(DateTime At, Level Level, string Message);

    public interface IWriter { void Write(Entry entry); int Count { get; } }

    public struct Range { public int From, To; public readonly int Length => To - From; }
    #endregion

    [Serializable]
    public sealed class Log : IWriter, IDisposable
    {
        private const int MAX_ENTRIES = 1_000;
        private static readonly double RATE = 1.5e-3, HALF = .5;
        private readonly List<Entry> entries = new();
        private string? path;

        public event Action<Entry>? Written;

        public Log(string? path = null) => this.path = path ?? @"C:\logs\""today"".txt";

        public int Count => entries.Count;

        public Entry this[int index]
        {
            get { return entries[index]; }
            private set { entries[index] = value; }
        }

        public void Write(Entry entry)
        {
            if (entry is null) throw new ArgumentNullException(nameof(entry));
            lock (entries)
            {
                if (entries.Count >= MAX_ENTRIES)
                    entries.RemoveAt(0);
                entries.Add(entry);
            }
            Written?.Invoke(entry);
        }

        public IEnumerable<Entry> Find(Func<Entry, bool> where)
        {
            foreach (var entry in entries)
            {
                if (where(entry))
                    yield return entry;
            }
        }

        public string Report(char mark = '\'')
        {
            var lines = from entry in entries
                        where entry.Level > Level.Debug && !entry.Message.StartsWith("#")
                        orderby entry.At descending
                        select $"{entry.At:yyyy-MM-dd} {mark}{entry.Message}{mark}\t\"{entry.Level}\"";
            return string.Join(Environment.NewLine, lines);
        }

        public void Dispose()
        {
            entries.Clear();
            path = null;
        }

        public static bool operator ==(Log? a, Log? b) => ReferenceEquals(a, b);
        public static bool operator !=(Log? a, Log? b) => !(a == b);
    }

    internal static class Program
    {
        private static unsafe int Bits(uint value)
        {
            int n = 0;
            for (; value != 0; value >>= 1)
                n += (int)(value & 1u);
            return n << 2 ^ ~n | 3 % 2;
        }

        public static async System.Threading.Tasks.Task<int> Main(string[] args)
        {
            using var log = new Log(args.Length > 0 ? args[0] : default);
            log.Written += e => Console.WriteLine($@"{e.Message}
  ""verbatim"" \ {e.Level}");
            log.Write(new Entry(DateTime.UtcNow, Level.Error, "disk full\n"));
            await System.Threading.Tasks.Task.Delay(10);
#if DEBUG
            Console.Error.WriteLine(log.Report());
#endif
            var total = log.Find(e => e.Level != Level.Debug).Count();
            object value = total * 0.5m;
            switch (value)
            {
                case decimal d when d > 1: return Bits((uint)d);
                case null: goto default;
                default: return typeof(Log) == value.GetType() ? 1 : 0;
            }
        }
    }
}
