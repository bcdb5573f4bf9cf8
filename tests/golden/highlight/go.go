// Package main counts words in files, one goroutine each.
package main

import (
	"bufio"
	"errors"
	"fmt"
	"os"
	"sort"
	"sync"
)

/* How much is read
   at once. */
const (
	KB = 1 << (10 * (iota + 1))
	MB
	MAX_FILES = 1_000
)

const mask, half, tiny = 0xFF &^ 0b11, .5, 1e-9

var errTooMany = errors.New("too many files")
var pattern = `raw "text" with \ and
two lines`

// Count is how often a word was seen.
type Count struct {
	Word string `json:"word"`
	N    int    `json:"n,omitempty"`
}

type Counter interface {
	Add(word string) int
	Top(n int) []Count
}

type counter struct {
	sync.Mutex
	counts map[string]int
	total  uint64
}

func NewCounter() *counter {
	return &counter{counts: make(map[string]int, 2*KB)}
}

func (c *counter) Add(word string) int {
	c.Lock()
	defer c.Unlock()
	c.counts[word]++
	c.total += 1
	return c.counts[word]
}

func (c *counter) Top(n int) []Count {
	list := []Count{}
	for word, n := range c.counts {
		list = append(list, Count{word, n})
	}
	sort.Slice(list, func(i, j int) bool {
		if list[i].N != list[j].N {
			return list[i].N > list[j].N
		}
		return list[i].Word < list[j].Word
	})
	if len(list) > n {
		list = list[:n]
	}
	return list
}

func isLetter(r rune) bool {
	return r >= 'a' && r <= 'z' || r == '\'' || r == '\u00e9'
}

func countFile(path string, c Counter, failed chan<- error) {
	file, err := os.Open(path)
	if err != nil {
		failed <- fmt.Errorf("cannot open %q: %w", path, err)
		return
	}
	defer file.Close()
	scanner := bufio.NewScanner(file)
	scanner.Split(bufio.ScanWords)
	for scanner.Scan() {
		c.Add(scanner.Text())
	}
}

func run(paths ...string) (result []Count, err error) {
	if len(paths) > MAX_FILES {
		return nil, errTooMany
	}
	c := NewCounter()
	failed := make(chan error, len(paths))
	var group sync.WaitGroup
	for _, path := range paths {
		group.Add(1)
		go func(p string) {
			defer group.Done()
			countFile(p, c, failed)
		}(path)
	}
	group.Wait()
	select {
	case err = <-failed:
	default:
	}
	return c.Top(10), err
}

func main() {
	result, err := run(os.Args[1:]...)
	if err != nil {
		fmt.Fprintln(os.Stderr, err.Error())
		os.Exit(1)
	}
outer:
	for i := 0; i < len(result); i++ {
		switch {
		case i&1 == 0 && !isLetter(rune(result[i].Word[0])):
			continue outer
		case i >= mask:
			break outer
		}
		fmt.Printf("%6d\t%s\n", result[i].N, result[i].Word)
	}
	var any interface{} = half
	if number, ok := any.(float64); ok {
		_ = number*tiny + 2.5i
	}
}
