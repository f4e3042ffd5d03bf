#!/usr/bin/env perl
# The pages of the help against the texts in the code, and against each other.
# usage: pages_test.pl SOURCE_TREE
use strict;
use warnings;
use File::Find;

my $tree = shift or die "usage: pages_test.pl SOURCE_TREE\n";
my $failures = 0;

# Texts of the string table that are no messages.
my %noMessage = map { $_ => 1 } (
  600,                                                    # the form's font
  1001, 1009, 1016, 1023, 1029, 1080,                     # titles of windows
  1017 .. 1020, 1052, 1053,                               # names of steps
  1033, 1034, 1036, 1055 .. 1060,                         # application types
  1040, 1042, 1079, 1083 .. 1085, 1092 .. 1094,           # in files
  1100,                                                   # a heading
);

# The prototype makes a match count as true or false; in a list a failed one would vanish.
sub Check($$) {
  my ($holds, $what) = @_;
  return 1 if $holds;
  print "FAILED: $what\n";
  $failures++;
  return 0;
}
sub ReadAll {
  my ($path) = @_;
  open(my $file, '<:raw', $path) or die "$path: $!\n";
  local $/;
  return <$file>;
}
sub InOneLine { my ($text) = @_; $text =~ s/\s+/ /g; $text =~ s/^ | $//g; return $text; }
# A piece of a page as a reader sees it; what stands in italics is a value, "%%1" in the code's texts.
sub Shown {
  my ($text) = @_;
  $text =~ s{<i>.*?</i>}{%%1}gs;
  $text =~ s/<br>/ /g;
  $text =~ s/<[^>]*>//g;
  my %entity = (lt => '<', gt => '>', amp => '&', nbsp => ' ');
  $text =~ s/&(\w+);/$entity{$1}/g;
  return InOneLine($text);
}

my %files = map { m{([^/]+)$} => ReadAll($_) } glob("$tree/help/*.{htm,css,hhc,hhk,hhp}");
my %pages = map { $_ => $files{$_} } grep { /\.htm$/ } keys %files;
Check(keys %pages > 5, "there are pages");
my @code;
find(sub { push @code, ReadAll($_) if /\.cpp$/ }, "$tree/src");

# ---- messages: all that is neither the text of a control nor named above
my %texts = ReadAll("$tree/src/text/Strings.inc") =~ /^STRING\((\d+), "(.*)"\)$/mg;
my %control = map { $_ => 1 } ReadAll("$tree/src/ui/frmMainTexts.cpp") =~ /(?:Resource|Tooltip)=(\d+)/g;
my %shown;
for my $name (keys %pages) {
  for my $block ($pages{$name} =~ m{<div class="message">(.*?)</div>}gs) {
    while ($block =~ m{<a name="m(\d+)">(.*?)</a>}gs) {
      my ($number, $text) = ($1, $2);
      Check(!defined $shown{$number}, "message $number is explained once");
      Check(defined $texts{$number}, "message $number is one of the code's");
      Check($block =~ /<b>When:/ && $block =~ /<b>What to do:/, "message $number has When and What to do");
      $shown{$number} = Shown($text);
    }
  }
}
for my $number (sort keys %texts) {
  next if $control{$number} || $noMessage{$number};
  (my $text = $texts{$number}) =~ s{/n}{ }g;
  $text =~ s/\\042/"/g;
  my $found = $shown{$number} // 'nothing';
  Check($found eq InOneLine($text), "message $number is shown as it is:\n  code: $text\n  help: $found");
}
my @boxes = map { /(\d+), kStyle/g } @code;
Check(@boxes > 5, "the code's message boxes are found");
Check(!$noMessage{$_} && !$control{$_}, "text $_ comes in a message box and needs an entry") for @boxes;

# ---- what is left to do: the code's sentences; what stands between their literals is a value
my $leftover = Shown($pages{'leftover.htm'});
my $start = qr/(?:NoteIncomplete|TellFailure|leftOut_\.emplace_back)\((?:std::string\()?(?:place,)?\s*/;
my @notes = map { /$start("(?:[^;"]|"[^;])*?(?:"|ErrorCodeText\(error\) \+ "."))\s*\);/g } @code;
my @calls = map { /$start"/g } @code;
Check(@calls > 0 && @notes == @calls, "the code's notes are understood");
for my $note (@notes) {
  my @pieces = $note =~ /("(?:[^"\\]|\\.)*")|([^"]+)/g;
  my $sentence = '';
  while (my ($literal, $between) = splice(@pieces, 0, 2)) {
    $sentence .= defined $literal ? substr($literal, 1, -1) : $between =~ /\w/ ? '%%1' : '';
  }
  $sentence =~ s/\\"/"/g;
  $sentence =~ s/^(.*?%%1[^%\\]*).*/$1/;  # as far as its second value, which may be a piece of a sentence
  Check(index($leftover, $sentence) >= 0, "what is left to do explains: $sentence");
}

# ---- links, contents, index and project
for my $name (keys %files) {
  for my $link ($files{$name} =~ /(?:href|src|name="Local" value)="([^"]*)"/g) {
    my ($target, $place) = split /#/, $link;
    $target = $name if $target eq '';
    Check(defined $files{$target}, "the link in $name to $link leads to a page") or next;
    Check(($files{$target} // '') =~ /<a name="\Q$place\E">/, "the link in $name to $link leads to a place")
      if defined $place;
  }
}
for my $name (keys %pages) {
  Check($files{'bxvbwiz.hhc'} =~ /value="\Q$name\E"/, "$name is in the contents");
  Check($files{'bxvbwiz.hhp'} =~ /^\[FILES\].*^\Q$name\E$/ms, "$name is in the project");
  Check($pages{$name} =~ m{<title>[^<]+</title>}, "$name has a title, which the viewer lists");
  Check($pages{$name} !~ /[^\n -~]/, "$name is plain ASCII, which old viewers read in every code page");
}
exit($failures > 0);
