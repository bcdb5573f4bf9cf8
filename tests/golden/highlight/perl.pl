#!/usr/bin/perl
use strict;
use warnings;
use List::Util qw(sum max);

=pod

=head1 NAME

logcount - counts the lines of a "log" by level

=cut

package LogCount;

our $VERSION = '1.02';
my %count = (error => 0, warning => 0);
my @order = ("error", 'warning', `hostname`);
my $limit = 1_000;
my $mask = 0xFF;

sub new {
    my ($class, %options) = @_;
    my $self = { limit => $options{limit} || $limit, lines => [] };
    return bless $self, $class;
}

sub add {
    my ($self, $line) = @_;
    chomp $line;
    return undef if $line =~ /^\s*#/;    # a comment in the log
    if ($line =~ /\[(error|warning)\]\s+(.*)/i) {
        my $level = lc $1;
        $count{$level}++;
        push @{$self->{lines}}, $2;
    } elsif ($line !~ /[\/\]]/) {
        $self->{other} += 1;
    }
    return scalar @{$self->{lines}};
}

sub average {
    my $self = shift;
    my @lengths = map { length $_ } @{$self->{lines}};
    return 0 unless @lengths;
    return sum(@lengths) / @lengths / 2;
}

sub report {
    my ($self, $out) = @_;
    foreach my $level (sort keys %count) {
        printf $out "%-10s %d\n", $level, $count{$level};
    }
    print $out "last: $self->{lines}[-1]\n" if $#{$self->{lines}} >= 0;
    print $out 'x' x 20, "\n";
    return $count{error} <=> $count{warning} || $self->{other} // 0;
}

package main;

my $log = LogCount->new(limit => 10);
while (my $line = <STDIN>) {
    last if $. > $limit;
    $log->add($line) or next;
}
open(my $out, '>', $ARGV[0] // '/dev/stdout') or die "cannot write: $!";
my $code = $log->report($out);
close $out;

my $text = "a" . "b" . join(',', @order[0 .. $#order]);
my ($first, $rest) = split /,/, $text, 2;
my $reference = \@order;
my $copy = $$reference[0] . ${text} . @$reference;
my $average = $log->average() ** 2 % 7;
$average .= "!" unless $average == 0 && !$code;
$average *= 1.5e3; $average <<= 2;
@ARGV = grep { -e $_ and not -d $_ } @ARGV;
local $, = ';'; local $/ = undef;
my $total = max(values %count) + $mask & ~$limit ^ 1;
print STDERR $@, $0, $$, "\n" if $total != 0;
exit($code < 0 ? 1 : 0);

# More of the language.
our @ISA = ('Base');
my $long = q(text) . qq{more $x};
my %map = map { $_ => 1 } qw(a b c);
sub compare($$) { $_[0] <=> $_[1] or $a cmp $b }
while (<>) {
    next unless /\S/;
    s/^\s+//; tr/a-z/A-Z/;
    push(@{ $map{lc $1} }, $2) while m/(\w+)=(\d+)/g;
}
my $ratio = ($total + 1) / (@list || 1) / 2;
my @sorted = sort { $map{$a} <=> $map{$b} } keys %map;
print "Sum: @{[ $total * 2 ]}\n", 'it\'s', "\$5";
my $ref = \&compare; &$ref(1, 2); &{$ref}(3, 4);
$hash{key}{other}[0] //= undef; $x **= 2; $y ||= 1;
if (($x & 1) == 0 && !($y | 2)) { $x <<= 1 } else { $x >>= 1 }
@array[1, 2] = @array[2, 1]; ($p, $q) = (1 .. 3);
my $re = qr/a+/i; my $n = () = $text =~ /x/g;
local $| = 1; $0 = 'name'; print $^W, $;, $:;
foreach my $i (0 .. $#{$ref}) { last if $i > 1_000 }
return wantarray ? @sorted : $sorted[0];

=begin comment

Not code: my $x = "open

=cut

__END__
