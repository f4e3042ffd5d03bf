#!/usr/bin/env perl
# The pages of the help against each other.
# usage: pages_test.pl SOURCE_TREE
use strict;
use warnings;

my $tree = shift or die "usage: pages_test.pl SOURCE_TREE\n";
my $failures = 0;

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
my %files = map { m{([^/]+)$} => ReadAll($_) } glob("$tree/help/*.{htm,css,hhc,hhk,hhp}");
my %pages = map { $_ => $files{$_} } grep { /\.htm$/ } keys %files;
Check(keys %pages > 5, "there are pages");
# links, contents, index and project
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
