# Keeps the list up to date with a configuration, given as text.
class quorvel (String $configuration) {
  file { '/etc/Quorvel.cfg':
    content => $configuration,
  }
  # Where the check itself fails it is run once more, for its line, but the tool is not: it would go on
  # where the check refuses the order of the keys, and add the values at each run.
  -> exec { 'update the list':
    provider => shell,
    path     => '/usr/bin:/bin',
    unless   => 'quorvel-check /etc/Quorvel.cfg',
    command  => 'quorvel-check /etc/Quorvel.cfg >/dev/null; [ $? = 1 ] && Quorvel update -config=/etc/Quorvel.cfg',
  }
  ~> exec { 'restart the smart-card service':
    command     => '/usr/bin/systemctl try-restart pcscd.service',
    refreshonly => true,
  }
}
