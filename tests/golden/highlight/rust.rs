//! A tokenizer and evaluator of arithmetic.
#![allow(dead_code)]

use std::collections::HashMap;
use std::fmt::{self, Display};

/* The kinds of token /* nested */ in order. */
#[derive(Debug, Clone, PartialEq)]
enum Token<'a> {
    Number(f64),
    Name(&'a str),
    Operator(char),
    Open,
    Close,
}

const MAX_DEPTH: usize = 1_000;
static HELP: &str = "usage: calc \"1 + 2\"\n";
const RAW: &str = r#"a "quoted" \ backslash"#;
const BYTES: &[u8] = b"bytes\x00";
const QUOTE: char = '\'';
const LETTERS: [char; 3] = ['a', '\n', '\u{1F600}'];

#[derive(Debug)]
pub enum CalcError {
    Unexpected { found: char, at: usize },
    TooDeep(usize),
}

impl Display for CalcError {
    fn fmt(&self, f: &mut fmt::Formatter<'_>) -> fmt::Result {
        match self {
            CalcError::Unexpected { found, at } => write!(f, "unexpected {found:?} at {at}"),
            Self::TooDeep(depth) if *depth != MAX_DEPTH => write!(f, "deep: {}", depth),
            _ => Ok(()),
        }
    }
}

pub trait Scope {
    type Value: Copy;
    fn get(&self, name: &str) -> Option<Self::Value>;
}

#[derive(Default)]
pub struct Names<'n> {
    values: HashMap<&'n str, f64>,
}

impl<'n> Scope for Names<'n> {
    type Value = f64;
    fn get(&self, name: &str) -> Option<f64> {
        self.values.get(name).copied()
    }
}

fn tokens(text: &str) -> Result<Vec<Token<'_>>, CalcError> {
    let mut found = vec![];
    let mut rest = text.char_indices().peekable();
    while let Some((at, c)) = rest.next() {
        match c {
            ' ' | '\t' => continue,
            '(' => found.push(Token::Open),
            ')' => found.push(Token::Close),
            '+' | '-' | '*' | '/' => found.push(Token::Operator(c)),
            '0'..='9' => {
                let mut end = at + 1;
                while let Some(&(next, d)) = rest.peek() {
                    if !d.is_ascii_digit() && d != '.' {
                        break;
                    }
                    end = next + d.len_utf8();
                    rest.next();
                }
                found.push(Token::Number(text[at..end].parse().unwrap_or(0.0)));
            }
            _ if c.is_alphabetic() => found.push(Token::Name(&text[at..at + 1])),
            found => return Err(CalcError::Unexpected { found, at }),
        }
    }
    Ok(found)
}

macro_rules! square {
    ($x:expr) => {
        $x * $x
    };
}

fn evaluate<S: Scope<Value = f64>>(list: &[Token], scope: &S, depth: usize) -> Result<f64, CalcError> {
    if depth > MAX_DEPTH {
        return Err(CalcError::TooDeep(depth));
    }
    let mut sum = 0x1F as f64 - 31.0;
    'outer: for (i, token) in list.iter().enumerate() {
        loop {
            match token {
                Token::Number(n) => sum += n,
                Token::Name(name) => sum += scope.get(name).unwrap_or(1.5e3_f64),
                Token::Operator(_) | Token::Open => {}
                Token::Close if i > 0b11 => break 'outer,
                Token::Close => break,
            }
            continue 'outer;
        }
    }
    Ok(square!(sum) % 7.0)
}

async fn run(line: String) -> Result<(), Box<dyn std::error::Error>> {
    let names = Names::default();
    let list = tokens(&line).map_err(|e| e.to_string())?;
    let pair = (1, 2.0);
    println!("{} = {:.3} {}", line, evaluate(&list, &names, 0).unwrap(), pair.0);
    assert_ne!(b'a', b'\n');
    let closure = move |x: i32| -> i32 { x << 2 & 0xff | !x ^ 1 };
    Ok(drop(closure(3)))
}

#[cfg(test)]
mod tests {
    use super::*;

    #[test]
    fn adds() {
        assert_eq!(tokens("1+2").unwrap().len(), 3);
        assert!(matches!(tokens("?"), Err(CalcError::Unexpected { found: '?', .. })));
    }
}
